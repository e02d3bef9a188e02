#include "ui/ComboMapping.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "ui/SaveDialog.h"
#include "ui/UiLog.h"

#include <QFontMetrics>

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

constexpr QSize barSize(160, 51);
constexpr QPoint menuPlace(0, 50); // of the pop-up, below the bar
constexpr QRect arrowPlace(142, 22, 13, 7);
constexpr QRect titlePlace(10, 0, 128, 51);

// Longer names lose their end in the menu.
constexpr int widestName = 360;

const QLatin1String barStyle("background-color: rgb(73, 90, 232)");
const QLatin1String arrowStyle("background-image: url(:/icons/comboarrow.png);");
const QLatin1String titleStyle("QLabel { color : rgba(255,255,255,1);  background-color: rgba(0,0,0,0);}");

// Untranslated: what decides, and what the log says.
constexpr char saveText[] = QT_TRANSLATE_NOOP("ComboMapping", "Save");
constexpr char setText[] = QT_TRANSLATE_NOOP("ComboMapping", "Set");
constexpr char deleteText[] = QT_TRANSLATE_NOOP("ComboMapping", "Delete");

constexpr char indexProperty[] = "index";
constexpr char typeProperty[] = "type";
const QLatin1String defaultType("Default");
const QLatin1String customType("Custom");

} // namespace

ComboMapping::ComboMapping(QWidget *parent)
    : ComboMenuBar(barSize, parent)
    , m_saveDialog(new SaveDialog(parent))
{
    setAccessibleName(tr("Mapping"));
    setAccessibleDescription(tr("Chooses, saves and deletes mappings"));
    setToolTip(tr("Choose what all buttons do, or save what they do now"));
    buildLabels();
    buildMenu();
    connect(m_saveDialog, &SaveDialog::saveCurrentMap, this, &ComboMapping::saveCurrentMap);
}

ComboMapping::~ComboMapping() = default;

void ComboMapping::buildLabels()
{
    addPicture(rect(), barStyle);
    addPicture(arrowPlace, arrowStyle);
    Look::addText(this, tr("Mapping"), titlePlace, titleStyle, Look::font(Look::Face::Menu, 12),
                  Qt::AlignCenter);
    finishLook();
}

void ComboMapping::buildMenu()
{
    const std::array<std::pair<QString, QString>, 2> submenus{
        {{tr("Examples"), tr("The mappings that come with the program")},
         {tr("Custom"), tr("The mappings that you have saved")}}};
    for (std::size_t kind = Default; kind <= Custom; ++kind) {
        m_submenus.at(kind) = menu().addMenu(submenus.at(kind).first);
        m_submenus.at(kind)->setToolTipsVisible(true);
        m_submenus.at(kind)->menuAction()->setToolTip(submenus.at(kind).second);
        applyStyle(*m_submenus.at(kind));
        menu().addSeparator();
    }
    QAction *save = menu().addAction(tr(saveText));
    save->setData(QLatin1String(saveText));
    save->setToolTip(tr("Keep what all buttons do now under a name of its own"));
    menu().addSeparator();
    menu().setToolTipsVisible(true);
}

ZRButtonMap *ComboMapping::mapAt(Kind kind, int index) const
{
    return m_maps.at(kind).value(index); // null outside the list
}

void ComboMapping::newMapListReady(QList<ZRButtonMap *> defaultButtonMapList, bool custom, int)
{
    qCInfo(lcUi).noquote().nospace() << "newMapListReady " << (custom ? "Costom" : "Default"); // as it is
    const Kind kind = custom ? Custom : Default;
    for (ZRButtonMap *map : qAsConst(defaultButtonMapList)) {
        if (map->parent() == nullptr) {
            map->setParent(this);
        }
    }
    if (!isMenuOpen()) {
        replace(kind, defaultButtonMapList);
        return;
    }
    for (ZRButtonMap *map : qAsConst(m_maps.at(kind))) {
        map->setParent(this); // its owner may let go of it while the user has it before his eyes
    }
    if (m_arrived.at(kind)) {
        qDeleteAll(owned(*m_arrived.at(kind))); // nobody has seen them
    }
    m_arrived.at(kind) = std::move(defaultButtonMapList);
}

ComboMapping::MapList ComboMapping::owned(const MapList &maps) const
{
    MapList found;
    std::copy_if(maps.begin(), maps.end(), std::back_inserter(found),
                 [this](const ZRButtonMap *map) { return map->parent() == this; });
    return found;
}

void ComboMapping::menuClosed()
{
    for (const Kind kind : {Default, Custom}) {
        if (m_arrived.at(kind)) {
            const MapList arrived = *std::exchange(m_arrived.at(kind), std::nullopt);
            replace(kind, arrived);
        }
    }
}

void ComboMapping::replace(Kind kind, const MapList &arrived)
{
    for (ZRButtonMap *map : owned(m_maps.at(kind))) {
        map->deleteLater(); // a slot of newMap() may have it in hand
    }
    m_maps.at(kind) = arrived;
    fill(kind);
    update();
}

void ComboMapping::fill(Kind kind)
{
    QMenu &list = *m_submenus.at(kind);
    const QList<QMenu *> before = list.findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
    list.clear();
    qDeleteAll(before);
    const QFontMetrics metrics(list.font());
    int index = 0;
    for (const ZRButtonMap *map : qAsConst(m_maps.at(kind))) {
        QString title = metrics.elidedText(map->name, Qt::ElideRight, widestName);
        title.replace(QLatin1Char('&'), QLatin1String("&&")); // a name, no mnemonic
        QMenu *mapping = list.addMenu(title);
        mapping->menuAction()->setToolTip(FittingText::toolTip(map->name));
        // Not before it is needed: most of a thousand are never opened.
        connect(mapping, &QMenu::aboutToShow, this, [this, mapping] { applyStyle(*mapping); });
        addAction(*mapping, setText, kind, index);
        if (kind == Custom) {
            mapping->addSeparator();
            addAction(*mapping, deleteText, kind, index);
        }
        list.addSeparator();
        ++index;
    }
}

void ComboMapping::addAction(QMenu &mapping, const char *text, Kind kind, int index)
{
    QAction *action = mapping.addAction(tr(text));
    action->setData(QLatin1String(text));
    action->setProperty(indexProperty, index);
    action->setProperty(typeProperty, QString(kind == Custom ? customType : defaultType));
}

void ComboMapping::dislayMenu()
{
    runMenu(menuPlace);
}

void ComboMapping::carryOut(const QAction &chosen)
{
    const QString text = chosen.data().toString();
    if (text == QLatin1String(saveText)) {
        qCInfo(lcUi) << "Save Current Template";
        m_saveDialog->showNormal();
        return;
    }
    const Kind kind = chosen.property(typeProperty).toString() == defaultType ? Default : Custom;
    const int index = chosen.property(indexProperty).toInt();
    qCInfo(lcUi).noquote() << (kind == Default ? "Selected Default Item" : "Selected Custom Item") << text
                           << index;
    ZRButtonMap *map = mapAt(kind, index);
    if (!map) {
        return;
    }
    if (kind == Custom && text == QLatin1String(deleteText)) {
        Q_EMIT deleteMap(map->name);
    } else {
        Q_EMIT newMap(map);
    }
}
