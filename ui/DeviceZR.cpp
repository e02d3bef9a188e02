#include "ui/DeviceZR.h"

#include "app/frame/AppInfo.h"
#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "device/SerialProtocol.h"
#include "engine/EventDispatcher.h"
#include "engine/KnobSettings.h"
#include "engine/LaunchOnStartup.h"
#include "engine/Settings.h"
#include "mapping/LibraryKeeper.h"
#include "net/MapUpdate.h"
#include "ui/ActionMenus.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/DeviceIndicators.h"
#include "ui/DevicePicture.h"
#include "ui/MapNotices.h"
#include "ui/MapPrinter.h"
#include "ui/OverlayDialog.h"
#include "ui/PageTexts.h"
#include "ui/SensitivitySlider.h"
#include "ui/UiLog.h"

#include <QCheckBox>
#include <QChildEvent>
#include <QCoreApplication>
#include <QFile>
#include <QFileDialog>
#include <QGraphicsOpacityEffect>
#include <QSignalBlocker>

DeviceZR::DeviceZR(QWidget *parent, SerialProtocol *serial, const Parts &parts)
    : ZRBaseWindow(parts.updater, parent)
    , m_parts(parts)
    , m_reader([this](const QString &title, const QString &directory, const QString &filter) {
        return QFileDialog::getOpenFileName(this, title, directory, filter);
    })
    , m_writer(parts.dataDirectory)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(Look::pageSheet());

    buildPicture();
    m_notices = new MapNotices(this);
    buildSelector();
    // The version is read before the menus, and written when all of the page stands: a start that ended in
    // between upgrades again.
    const QString version = QLatin1String(AppInfo::version);
    if (Settings::isOlder(*m_parts.settings, version)) {
        ActionMenus::upgrade(*m_parts.settings);
    }
    m_menus = new ActionMenus(serial, this, *m_parts.settings);
    PageTexts::addAll(*this, m_parts.midiPortName);
    buildStartupBox();
    buildSliders();
    m_indicators = new DeviceIndicators(this);
    connectIndicators();
    connectDevice(serial);
    connect(m_menus, &ActionMenus::onActionChanged, this, &DeviceZR::saveCurrentMapAsDefault);
    connect(m_menus, &ActionMenus::assignmentChanged, this, &DeviceZR::useAssignment);
    connect(m_notices, &MapNotices::keep, this, &DeviceZR::saveCurrentMapAsDefault);
    orderFocus();
    loadMappings();

    m_parts.settings->setUsedBy(version);
}

DeviceZR::~DeviceZR() = default;

void DeviceZR::buildPicture()
{
    m_picture = new DevicePicture(this);

    // The last value is unfinished, and is kept as it is.
    m_printer = Look::addPicture<ClickableLabel>(
        this, {630, 12, 41, 41},
        QStringLiteral("background-color: rgb(73, 90, 232);"
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
    connect(&m_reader, &XmlMappingReader::newMapListReady, this, &DeviceZR::takeMaps);
    connect(&m_reader, &XmlMappingReader::onCurrentMapLoaded, this, &DeviceZR::loadDefaultMap);

    m_reader.readMapList(libraryFile(), false);
    m_reader.readMapList(m_parts.dataDirectory + QStringLiteral("/custom.xml"), true);

    connect(m_selector, &ComboMapping::saveCurrentMap, this, &DeviceZR::saveCurrentMap);
    connect(m_selector, &ComboMapping::deleteMap, this, &DeviceZR::deleteMap);
    connect(m_selector, &ComboMapping::newMap, this, &DeviceZR::newMap);
    connect(m_parts.mapUpdate, &MapUpdate::dowloadFinished, this, &DeviceZR::dowloadFinished);
    connect(m_parts.mapUpdate, &MapUpdate::updateStarted, m_notices, &MapNotices::showUpdating);
}

void DeviceZR::buildStartupBox()
{
    m_startup = new QCheckBox(this);
    m_startup->setGeometry(24, 625, 200, 15);
    m_startup->setFont(Look::font(Look::Face::Page, 10));
    m_startup->setStyleSheet(QStringLiteral("QCheckBox { color : rgba(255,255,255,0.40); }"));
    m_startup->setChecked(m_parts.launchOnStartup->isLaunchOnStartup());
    FittingText::show(m_startup, tr("Launch on startup"), tr("Start the program when you log on"));
    connect(m_startup, &QCheckBox::toggled, this, &DeviceZR::setLaunchOnStartup);
}

void DeviceZR::buildSliders()
{
    const auto add = [this](const QRect &place, int value, const QString &name) {
        auto *slider = new SensitivitySlider(this);
        slider->setGeometry(place);
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
    connect(serial, &SerialProtocol::aboutToUnplug, m_parts.dispatcher, &EventDispatcher::letKnobGo);
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

// The dialogs dim the page when they come; undoing that is up to the page, as is what they work with. Most
// are made only when they are asked for, and each is polished once, before it is first seen.
void DeviceZR::childEvent(QChildEvent *event)
{
    ZRBaseWindow::childEvent(event);
    auto *dialog = event->polished() ? qobject_cast<OverlayDialog *>(event->child()) : nullptr;
    if (dialog != nullptr) {
        dialog->setDesktop(m_parts.desktop);
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
    next(m_notices->keepButton());
    for (ComboMenu *menu : m_menus->menus()) {
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
    bool loaded = false;
    if (QFile::exists(workingCopy)) {
        m_reader.readCurrentMap(workingCopy);
        loaded = m_kept != nullptr;
    } else {
        loaded = m_selector->selectDefault();
    }
    if (!loaded) {
        useMenus(); // they stand as the settings left them
    }
    markKept();
}

void DeviceZR::takeMaps(const QList<ZRButtonMap *> &maps, bool custom, int defaultMap)
{
    if (!custom && maps.isEmpty()) {
        // A page that somebody else sent in the library's place, most likely: it takes no mapping away.
        qCWarning(lcUi) << "The library holds no mapping: the selector keeps those that it has";
        return;
    }
    m_selector->newMapListReady(maps, custom, defaultMap);
    if (!custom) {
        LibraryKeeper::keep(libraryFile(), maps.size());
    }
}

void DeviceZR::load(const ZRButtonMap &map)
{
    m_menus->load(map);
    useMenus();
}

// What the menus hold is what the device does.
void DeviceZR::useMenus()
{
    m_parts.dispatcher->setMap(*m_menus->mapNamed(QString()));
    updateToolTips();
}

void DeviceZR::useAssignment(int control, int layer, const shortCut &assignment)
{
    m_parts.dispatcher->setAction(control, layer, assignment);
    updateToolTips();
    showWhatIsNotKept();
}

void DeviceZR::markKept()
{
    m_kept = m_menus->mapNamed(QString());
    showWhatIsNotKept();
}

void DeviceZR::showWhatIsNotKept()
{
    if (m_kept) {
        m_notices->setKept(m_menus->hold(*m_kept));
    }
}

void DeviceZR::updateToolTips()
{
    m_picture->setControlToolTips(m_menus->inWords());
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
    if (success) {
        m_reader.readMapList(libraryFile(), false);
    }
    m_notices->endUpdating(success);
}

void DeviceZR::printCurrentView()
{
    m_printer->graphicsEffect()->setEnabled(true);
    MapPrinter::askAndPrint(*this);
    m_printer->graphicsEffect()->setEnabled(false);
}

void DeviceZR::saveCurrentMap(const QString &name)
{
    m_writer.saveToCustom(m_menus->mapNamed(name).get());
    m_reader.readMapList(m_parts.dataDirectory + QStringLiteral("/custom.xml"), true);
}

void DeviceZR::deleteMap(const QString &name)
{
    m_writer.removeMap(name);
    m_reader.readMapList(m_parts.dataDirectory + QStringLiteral("/custom.xml"), true);
}

void DeviceZR::saveCurrentMapAsDefault()
{
    m_writer.saveMap(m_menus->mapNamed(QStringLiteral("current_map")).get(), QStringLiteral("/current.xml"),
                     true);
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
    m_notices->hideUpdate();
    {
        const QSignalBlocker blocker(m_startup); // reading is no choice of the user's
        m_startup->setChecked(m_parts.launchOnStartup->isLaunchOnStartup());
    }
    m_parts.mapUpdate->check();
}
