#include "ui/DeviceZR.h"

#include "app/AppInfo.h"
#include "app/frame/ClickableLabel.h"
#include "device/SerialProtocol.h"
#include "engine/EventDispatcher.h"
#include "engine/KnobSettings.h"
#include "engine/LaunchOnStartup.h"
#include "mapping/LibraryKeeper.h"
#include "net/MapUpdate.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/DeviceIndicators.h"
#include "ui/DevicePicture.h"
#include "ui/MapPrinter.h"
#include "ui/OverlayDialog.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFile>
#include <QFileDialog>
#include <QFontMetrics>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>

namespace
{

const QLatin1String bright("QLabel { color : rgba(255,255,255,0.87); }");
const QLatin1String middle("QLabel { color : rgba(255,255,255,0.57); }");
const QLatin1String dim("QLabel { color : rgba(255,255,255,0.60); }");
const QLatin1String dark("QLabel { color : rgba(255,255,255,0.40); }");

// The places are fixed and the texts' widths are not: a text that is too wide is drawn narrower, and one that
// is too wide even so is shortened, with the whole of it in the tool tip.
void showFitting(QLabel *label, const QString &text)
{
    constexpr int narrowest = 80; // percent; below it letters look wrong
    QFont font = label->font();
    const int width = QFontMetrics(font).horizontalAdvance(text);
    if (width > label->width()) {
        font.setStretch(qMax(narrowest, label->width() * 100 / (width + 1)));
        label->setFont(font);
    }
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, label->width());
    label->setText(shown);
    if (shown != text) {
        label->setToolTip(text);
    }
}

QString layerTitle(int layer)
{
    switch (layer) {
    case 0:
        return DeviceZR::tr("Normal");
    case 1:
        return DeviceZR::tr("Shift 1");
    default:
        return DeviceZR::tr("Shift 2");
    }
}

} // namespace

DeviceZR::DeviceZR(QWidget *parent, SerialProtocol *serial, const Parts &parts)
    : ZRBaseWindow(parts.updater, parent)
    , m_parts(parts)
    , m_reader([this](const QString &title, const QString &directory, const QString &filter) {
        return QFileDialog::getOpenFileName(this, title, directory, filter);
    })
    , m_writer(parts.dataDirectory)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("background-color:#5342d9"));

    buildPicture();
    buildSelector();
    buildMenus(serial);
    buildTexts();
    buildStartupBox();
    buildSliders();
    m_indicators = new DeviceIndicators(this);
    connectIndicators();
    connectDevice(serial);
    followDialogs();
    orderFocus();
    loadMappings();

    QSettings().setValue(QStringLiteral("ZR.ver"), QLatin1String(AppInfo::version));
}

DeviceZR::~DeviceZR() = default;

QLabel *DeviceZR::addLabel(const QString &text, const QRect &place, const QString &style, int pointSize,
                           int weight)
{
    auto *label = new QLabel(this);
    label->setGeometry(place);
    label->setStyleSheet(style);
    label->setFont(QFont(QStringLiteral("Source Sans Pro"), pointSize, weight));
    showFitting(label, text);
    return label;
}

void DeviceZR::buildPicture()
{
    m_picture = new DevicePicture(this);

    m_printer = new ClickableLabel(this);
    m_printer->setGeometry(630, 12, 41, 41);
    // The last value is unfinished, and is kept as it is.
    m_printer->setStyleSheet(QStringLiteral("background-color: rgb(73, 90, 232);"
                                            "background-image: url(:/icons/printer.png);"
                                            "background-position: center center;background-repeat: no"));
    m_printer->setAccessibleName(tr("Print"));
    m_printer->setToolTip(tr("Print what the buttons do"));
    auto *dimming = new QGraphicsOpacityEffect(m_printer);
    dimming->setOpacity(0.5);
    m_printer->setGraphicsEffect(dimming);
    dimming->setEnabled(false);
    connect(m_printer, &ClickableLabel::clicked, this, &DeviceZR::printCurrentView);
}

void DeviceZR::buildSelector()
{
    m_selector = new ComboMapping(this);
    m_selector->setGeometry(680, 12, 160, 51);
    m_notice = addLabel(QString(), {680, 68, 200, 18}, dim, 10, QFont::Normal);
    m_notice->setObjectName(QStringLiteral("mapNotice"));
    m_notice->hide();
    m_notKept = addLabel(QString(), {680, 86, 200, 34}, dim, 9, QFont::Normal);
    m_notKept->setObjectName(QStringLiteral("notKept"));
    m_notKept->setTextFormat(Qt::RichText);
    m_notKept->setWordWrap(true);
    m_notKept->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    m_notKept->setText(
        tr("Your changes end with the program. %1")
            .arg(QStringLiteral("<a href=\"keep\" style=\"color:#ffffff\">%1</a>").arg(tr("Keep"))));
    m_notKept->setToolTip(tr("Writes what the page shows as the mapping that the program starts with"));
    m_notKept->hide();
    connect(m_notKept, &QLabel::linkActivated, this, &DeviceZR::saveCurrentMapAsDefault);

    connect(&m_reader, &XmlMappingReader::newMapListReady, m_selector, &ComboMapping::newMapListReady);
    connect(&m_reader, &XmlMappingReader::newMapListReady, this,
            [this](const QList<ZRButtonMap *> &maps, bool custom, int) {
                if (!custom) {
                    LibraryKeeper::keep(libraryFile(), maps.size());
                }
            });
    connect(&m_reader, &XmlMappingReader::onCurrentMapLoaded, this, &DeviceZR::loadDefaultMap);

    m_reader.readMapList(libraryFile(), false);
    m_reader.readMapList(m_parts.dataDirectory + QStringLiteral("/custom.xml"), true);

    connect(m_selector, &ComboMapping::saveCurrentMap, this, &DeviceZR::saveCurrentMap);
    connect(m_selector, &ComboMapping::deleteMap, this, &DeviceZR::deleteMap);
    connect(m_selector, &ComboMapping::newMap, this, &DeviceZR::newMap);
    connect(m_parts.mapUpdate, &MapUpdate::dowloadFinished, this, &DeviceZR::dowloadFinished);
    connect(m_parts.mapUpdate, &MapUpdate::updateStarted, this, [this] {
        m_notice->setText(tr("Updating maps"));
        m_notice->show();
    });
}

void DeviceZR::buildMenus(SerialProtocol *serial)
{
    constexpr int rows = 5;
    const auto add = [&](int control, const QRect &place) {
        auto *menu = new ComboMenu(control, serial, this);
        menu->setGeometry(place);
        connect(menu, &ComboMenu::onActionChanged, this, &DeviceZR::saveCurrentMapAsDefault);
        connect(menu, &ComboMenu::assignmentChanged, this,
                [this, control](int layer) { useAssignment(control, layer); });
        m_menus[static_cast<std::size_t>(control)] = menu;
    };
    for (int row = 0; row < rows; ++row) {
        add(row, {88, 239 + 47 * row, 160, 41});
        add(row + rows, {650, 239 + 47 * row, 160, 41});
    }
}

void DeviceZR::buildTexts()
{
    addLabel(tr("VELTRIX"), {260, 129, 378, 44}, bright, 37, QFont::Light)->setAlignment(Qt::AlignCenter);
    addLabel(tr("Knob and buttons settings."), {295, 185, 301, 60}, middle, 20, QFont::Light)
        ->setAlignment(Qt::AlignCenter);
    addLabel(tr("Knob sensitivity adjustment"), {349, 490, 200, 20}, bright, 13, QFont::Normal)
        ->setAlignment(Qt::AlignCenter);
    addLabel(tr("NORMAL"), {315, 524, 38, 11}, bright, 8, QFont::Normal);
    addLabel(tr("SHIFT 1"), {315, 564, 34, 11}, bright, 8, QFont::Normal);
    addLabel(tr("Slow"), {359, 590, 30, 14}, dim, 11, QFont::Normal);
    addLabel(tr("Fast"), {520, 590, 26, 14}, dim, 11, QFont::Normal);

    QLabel *midi =
        addLabel(tr("MIDI: ") + m_parts.midiPortName, {690, 625, 200, 15}, dark, 10, QFont::Normal);
    midi->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    midi->setObjectName(QStringLiteral("midiPort"));
    midi->setToolTip(
        tr("%1\nThe MIDI output in use: the first one whose name contains \"FROM\" when the program "
           "starts")
            .arg(m_parts.midiPortName));
}

void DeviceZR::buildStartupBox()
{
    m_startup = new QCheckBox(tr("Launch on startup"), this);
    m_startup->setGeometry(24, 625, 200, 15);
    m_startup->setFont(QFont(QStringLiteral("Source Sans Pro"), 10, QFont::Normal));
    m_startup->setStyleSheet(QStringLiteral("QCheckBox { color : rgba(255,255,255,0.40); }"));
    m_startup->setChecked(m_parts.launchOnStartup->isLaunchOnStartup());
    m_startup->setToolTip(tr("Start the program when you log on"));
    connect(m_startup, &QCheckBox::toggled, this, &DeviceZR::setLaunchOnStartup);
}

void DeviceZR::buildSliders()
{
    const auto add = [this](const QRect &place, int value, const QString &name) {
        auto *slider = new QSlider(Qt::Horizontal, this);
        slider->setGeometry(place);
        slider->setTickPosition(QSlider::TicksBelow);
        slider->setRange(KnobSettings::minimum, KnobSettings::maximum);
        slider->setInvertedAppearance(true); // the slow end, with the higher values, lies at the left
        slider->setInvertedControls(true);
        slider->setValue(value);
        slider->setAccessibleName(name);
        slider->setToolTip(tr("How far the knob has to be turned for a step"));
        return slider;
    };
    m_normal = add({362, 527, 176, 16}, 50, tr("Knob sensitivity"));
    m_shift1 = add({362, 568, 176, 16}, 70, tr("Knob sensitivity in Shift 1"));
    m_normal->setValue(m_parts.knobSettings->sensitivityNormal());
    m_shift1->setValue(m_parts.knobSettings->sensitivityShift1());
    connect(m_normal, &QSlider::valueChanged, this, &DeviceZR::setKnobSensitivityNormal);
    connect(m_shift1, &QSlider::valueChanged, this, &DeviceZR::setKnobSensitivityShift1);
}

void DeviceZR::connectDevice(SerialProtocol *serial)
{
    connect(serial, &SerialProtocol::portChange, this, &DeviceZR::onDeviceConnected);
    connect(serial, &SerialProtocol::onButtonpress, this, &DeviceZR::onButtonpress);
    connect(serial, qOverload<char>(&SerialProtocol::onKnobevent), this,
            qOverload<char>(&DeviceZR::onKnobevent));
    connect(serial, qOverload<int>(&SerialProtocol::onKnobevent), this,
            qOverload<int>(&DeviceZR::onKnobevent));
    connect(qApp, &QCoreApplication::aboutToQuit, this, &DeviceZR::restoreMouse);
}

void DeviceZR::connectIndicators()
{
    const EventDispatcher *dispatcher = m_parts.dispatcher;
    connect(dispatcher, &EventDispatcher::buttonHeld, m_indicators, &DeviceIndicators::setHeld);
    connect(dispatcher, &EventDispatcher::knobTouchShown, m_indicators, &DeviceIndicators::setKnobTouched);
    connect(dispatcher, &EventDispatcher::turning, m_indicators, &DeviceIndicators::setTurning);
    connect(dispatcher, &EventDispatcher::displayControlPanel, this, &DeviceZR::displayControlPanel);
    connect(dispatcher, &EventDispatcher::gameControl, this, &DeviceZR::gameControl);
}

// The dialogs dim the page when they come; undoing that is up to the page.
void DeviceZR::followDialogs()
{
    for (const OverlayDialog *dialog : findChildren<OverlayDialog *>()) {
        connect(dialog, &OverlayDialog::hidden, this, [this] { setBlur(false); });
    }
}

void DeviceZR::orderFocus()
{
    QWidget *previous = m_printer;
    const auto next = [&previous](QWidget *widget) {
        setTabOrder(previous, widget);
        previous = widget;
    };
    next(m_selector);
    next(m_notKept);
    for (ComboMenu *menu : m_menus) {
        next(menu);
    }
    next(m_normal);
    next(m_shift1);
    next(m_startup);
}

QString DeviceZR::libraryFile() const
{
    return m_parts.dataDirectory + QStringLiteral("/ZR.xml");
}

void DeviceZR::loadMappings()
{
    const QString workingCopy = m_parts.dataDirectory + QStringLiteral("/current.xml");
    if (QFile::exists(workingCopy)) {
        m_reader.readCurrentMap(workingCopy);
    } else {
        m_selector->selectDefault();
    }
    if (!m_kept) {
        // Nothing to load: the menus stand as the settings left them.
        m_parts.dispatcher->setMap(*pageMap(QString()));
    }
    markKept();
}

std::unique_ptr<ZRButtonMap> DeviceZR::pageMap(const QString &name) const
{
    auto map = std::make_unique<ZRButtonMap>(name);
    for (std::size_t button = 0; button < m_menus.size(); ++button) {
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            map->actions[button][layer] = m_menus[button]->assignment(layer); // all fields, the knob's too
        }
    }
    return map;
}

void DeviceZR::load(const ZRButtonMap &map)
{
    m_loading = true;
    for (std::size_t button = 0; button < m_menus.size(); ++button) {
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            m_menus[button]->getShorcut(layer, map.actions[button][layer]);
        }
    }
    m_loading = false;
    // What the menus hold is what the device does.
    m_parts.dispatcher->setMap(*pageMap(map.name));
    updateToolTips();
}

void DeviceZR::useAssignment(int button, int layer)
{
    if (m_loading) {
        return;
    }
    m_parts.dispatcher->setAction(button, layer,
                                  m_menus[static_cast<std::size_t>(button)]->assignment(layer));
    updateToolTips();
    showWhatIsNotKept();
}

void DeviceZR::markKept()
{
    m_kept = pageMap(QString());
    showWhatIsNotKept();
}

void DeviceZR::showWhatIsNotKept()
{
    if (!m_kept) {
        return;
    }
    bool same = true;
    for (std::size_t button = 0; button < m_menus.size(); ++button) {
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            same = same && m_menus[button]->assignment(layer) == m_kept->actions[button][layer];
        }
    }
    m_notKept->setVisible(!same);
}

void DeviceZR::updateToolTips()
{
    QStringList texts;
    for (const ComboMenu *menu : m_menus) {
        QStringList lines;
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            lines << tr("%1: %2").arg(layerTitle(layer), menu->inWords(layer));
        }
        texts << lines.join(QLatin1Char('\n'));
    }
    m_picture->setControlToolTips(texts);
    m_picture->setKnobToolTip(tr(
        "The knob: touch it to take hold, turn it to act.\nButtons with a knob mode choose what it does."));
}

void DeviceZR::onDeviceConnected(const QString &deviceName)
{
    if (deviceName.isEmpty()) {
        m_parts.dispatcher->onDeviceLost();
        for (OverlayDialog *dialog : findChildren<OverlayDialog *>()) {
            dialog->hide();
        }
    }
    Q_EMIT displayControlPanel(deviceName);
}

void DeviceZR::restoreMouse()
{
    m_parts.dispatcher->restoreMouse();
}

void DeviceZR::newMap(ZRButtonMap *buttonMap)
{
    load(*buttonMap);
    showWhatIsNotKept();
}

void DeviceZR::loadDefaultMap(ZRButtonMap *buttonMap)
{
    const std::unique_ptr<ZRButtonMap> owned(buttonMap);
    load(*owned);
    markKept();
}

void DeviceZR::replyFinished(QNetworkReply *reply)
{
    m_parts.mapUpdate->replyFinished(reply);
}

void DeviceZR::dowloadFinished(bool success)
{
    m_notice->setVisible(success);
    if (success) {
        m_reader.readMapList(libraryFile(), false);
        m_notice->setText(tr("New maps available!"));
    }
}

void DeviceZR::printCurrentView()
{
    m_printer->graphicsEffect()->setEnabled(true);
    MapPrinter::askAndPrint(*this);
    m_printer->graphicsEffect()->setEnabled(false);
}

void DeviceZR::saveCurrentMap(const QString &name)
{
    m_writer.saveToCustom(pageMap(name).get());
    m_reader.readMapList(m_parts.dataDirectory + QStringLiteral("/custom.xml"), true);
}

void DeviceZR::deleteMap(const QString &name)
{
    m_writer.removeMap(name);
    m_reader.readMapList(m_parts.dataDirectory + QStringLiteral("/custom.xml"), true);
}

void DeviceZR::saveCurrentMapAsDefault()
{
    m_writer.saveMap(pageMap(QStringLiteral("current_map")).get(), QStringLiteral("/current.xml"), true);
    markKept();
}

void DeviceZR::setKnobSensitivityNormal(int val)
{
    m_parts.knobSettings->setKnobSensitivityNormal(val);
}

void DeviceZR::setKnobSensitivityShift1(int val)
{
    m_parts.knobSettings->setKnobSensitivityShift1(val);
}

void DeviceZR::onButtonpress(int button, bool pressing)
{
    m_parts.dispatcher->onButtonpress(button, pressing);
}

void DeviceZR::onKnobevent(char type)
{
    m_parts.dispatcher->onKnobevent(type);
}

void DeviceZR::onKnobevent(int count)
{
    m_parts.dispatcher->onKnobevent(count);
}

void DeviceZR::setLaunchOnStartup(bool on)
{
    m_parts.launchOnStartup->setLaunchOnStartup(on);
}

void DeviceZR::onUserMovingMouse()
{
    m_parts.dispatcher->onUserMovingMouse();
}

void DeviceZR::reEnableZR()
{
    m_parts.dispatcher->reEnableZR();
}

void DeviceZR::showEvent(QShowEvent *event)
{
    ZRBaseWindow::showEvent(event);
    m_notice->hide();
    {
        const QSignalBlocker blocker(m_startup); // reading is no choice of the user's
        m_startup->setChecked(m_parts.launchOnStartup->isLaunchOnStartup());
    }
    m_parts.mapUpdate->check();
}
