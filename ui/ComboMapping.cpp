#include "ui/ComboMapping.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "mapping/XmlMappingReader.h"
#include "ui/MappingList.h"
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

// Longer names lose their end in the menu, and still longer ones in their tool tips too.
constexpr int widestName = 360;
constexpr int longestName = 200; // characters

// As many are listed in a few milliseconds, with the whole menu; more only when their submenu is opened.
constexpr int fewMappings = 1000;

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

QString cut(const QString &name)
{
    return name.size() > longestName ? name.left(longestName) + QChar(0x2026) : name;
}

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
    m_saveDialog->setListed([this](const QString &name) {
        const MapList &maps = m_maps.at(Custom);
        return std::any_of(maps.begin(), maps.end(),
                           [&name](const ZRButtonMap *map) { return map->name == name; });
    });
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
        m_submenus.at(kind) = new MappingList(submenus.at(kind).first, &menu());
        menu().addMenu(m_submenus.at(kind));
        m_submenus.at(kind)->setToolTipsVisible(true);
        m_submenus.at(kind)->menuAction()->setToolTip(submenus.at(kind).second);
        applyStyle(*m_submenus.at(kind));
        connect(m_submenus.at(kind), &QMenu::aboutToShow, this,
                [this, kind] { fill(static_cast<Kind>(kind)); });
        connect(m_submenus.at(kind), &QMenu::aboutToShow, this,
                [this, kind] { mark(static_cast<Kind>(kind)); });
        menu().addSeparator();
    }
    QAction *save = menu().addAction(tr(saveText));
    save->setData(QLatin1String(saveText));
    save->setToolTip(tr("Keep what all buttons do now under a name of its own"));
    menu().addSeparator();
    menu().setToolTipsVisible(true);
    connect(&menu(), &QMenu::aboutToShow, this, [this] {
        for (const Kind kind : {Default, Custom}) {
            if (m_maps.at(kind).size() <= fewMappings) {
                fill(kind);
            }
            mark(kind);
        }
    });
}

ZRButtonMap *ComboMapping::mapAt(Kind kind, int index) const
{
    return m_maps.at(kind).value(index); // null outside the list
}

void ComboMapping::selectDefault()
{
    if (ZRButtonMap *map = mapAt(Default, m_defaultMap)) {
        Q_EMIT newMap(map);
    }
}

void ComboMapping::newMapListReady(QList<ZRButtonMap *> defaultButtonMapList, bool custom, int defaultMap)
{
    qCInfo(lcUi).noquote().nospace() << "newMapListReady " << (custom ? "Costom" : "Default"); // as it is
    const Kind kind = custom ? Custom : Default;
    if (!custom) {
        m_defaultMap = defaultMap;
    }
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
    const MapList replaced = owned(m_maps.at(kind));
    for (ZRButtonMap *map : replaced) {
        map->deleteLater(); // a slot of newMap() may have it in hand
    }
    m_maps.at(kind) = arrived;
    m_filled.at(kind) = false;
    empty(kind);
    update();
}

void ComboMapping::empty(Kind kind)
{
    QMenu &list = *m_submenus.at(kind);
    const QList<QMenu *> before = list.findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
    list.clear();
    qDeleteAll(before);
}

// Not before the user opens the menu: a file may hold a hundred thousand mappings, and most are never seen.
void ComboMapping::fill(Kind kind)
{
    if (std::exchange(m_filled.at(kind), true)) {
        return;
    }
    MappingList &list = *m_submenus.at(kind);
    if (kind == Custom && m_maps.at(kind).isEmpty()) {
        list.addAction(tr("none yet"))->setEnabled(false);
        return;
    }
    const QFontMetrics metrics(list.font());
    int index = 0;
    for (const ZRButtonMap *map : qAsConst(m_maps.at(kind))) {
        const QString name = cut(map->name);
        QString title = metrics.elidedText(name, Qt::ElideRight, widestName);
        title.replace(QLatin1Char('&'), QLatin1String("&&")); // a name, no mnemonic
        QMenu *mapping = list.addMenu(title);
        mapping->menuAction()->setToolTip(FittingText::toolTip(name));
        connect(mapping, &QMenu::aboutToShow, this,
                [this, mapping, kind, index] { fillMapping(*mapping, kind, index); });
        list.takeInputFrom(*mapping);
        list.addSeparator();
        ++index;
    }
}

void ComboMapping::setInUse(const ZRButtonMap *map)
{
    m_inUse = map;
}

void ComboMapping::mark(Kind kind)
{
    const MapList &maps = m_maps.at(kind);
    const int inUse = m_inUse != nullptr ? maps.indexOf(const_cast<ZRButtonMap *>(m_inUse)) : -1;
    QAction *own = m_submenus.at(kind)->menuAction();
    own->setCheckable(inUse >= 0);
    own->setChecked(inUse >= 0);
    const QList<QAction *> entries = m_submenus.at(kind)->actions();
    int index = 0;
    for (QAction *entry : entries) {
        if (entry->menu() != nullptr) {
            const bool marked = index++ == inUse;
            entry->setCheckable(marked);
            entry->setChecked(marked);
        }
    }
}

void ComboMapping::fillMapping(QMenu &mapping, Kind kind, int index)
{
    if (!mapping.isEmpty()) {
        return;
    }
    applyStyle(mapping);
    addAction(mapping, setText, kind, index);
    if (kind == Custom) {
        mapping.addSeparator();
        addAction(mapping, deleteText, kind, index);
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
        // By no name at all when it has none: another may really be called what this one is listed as.
        Q_EMIT deleteMap(XmlMappingReader::isNameless(*map) ? QString() : map->name);
    } else {
        Q_EMIT newMap(map);
    }
}
