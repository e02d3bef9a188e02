#include "ui/DeviceZR.h"

#include "app/frame/AppInfo.h"
#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"
#include "device/SerialProtocol.h"
#include "engine/EventDispatcher.h"
#include "engine/KnobSettings.h"
#include "engine/LaunchOnStartup.h"
#include "engine/Settings.h"
#include "engine/platform/Desktop.h"
#include "mapping/MappingSession.h"
#include "net/MapUpdate.h"
#include "ui/ActionMenus.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/ComboMenuEntries.h"
#include "ui/ComboMenuSettings.h"
#include "ui/DeviceIndicators.h"
#include "ui/DevicePicture.h"
#include "ui/MapNotices.h"
#include "ui/MapPrinter.h"
#include "ui/MappingFileExchange.h"
#include "ui/OverlayDialog.h"
#include "ui/PageCheckBox.h"
#include "ui/PageTexts.h"
#include "ui/ProgramChoice.h"
#include "ui/ProgramsOnPage.h"
#include "ui/SaveDialog.h"
#include "ui/SensitivitySlider.h"
#include "ui/TakeBack.h"

#include <QCheckBox>
#include <QChildEvent>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QSignalBlocker>

#include <memory>

DeviceZR::DeviceZR(QWidget *parent, SerialProtocol *serial, const Parts &parts)
    : ZRBaseWindow(parts.updater, parent)
    , m_parts(parts)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(Look::pageSheet());

    buildPicture();
    m_notices = new MapNotices(this);
    buildSelector();
    // The version is read before the menus, and written when all of the page stands: a start that ended in
    // between upgrades again.
    if (Settings::isOlder(*m_parts.settings, QLatin1String(AppInfo::version))) {
        ActionMenus::upgrade(*m_parts.settings);
    }
    m_menus = new ActionMenus(*m_parts.mappings, serial, this, *m_parts.settings);
    PageTexts::addAll(*this, m_parts.midiPortName);
    PageTexts::addNotice(*this, m_parts.notice);
    buildStartupBox();
    buildSliders();
    m_indicators = new DeviceIndicators(this);
    connectIndicators();
    connectDevice(serial);
    showSensitivity();
    followMappings();
    if (m_parts.programMappings != nullptr) {
        m_programs = new ProgramsOnPage(*m_parts.programSwitch, *m_parts.programMappings, *m_notices, this);
    }
    orderFocus();
    m_parts.mappings->setFileChooser(
        [this](const QString &title, const QString &folder, const QString &filter) {
            return QFileDialog::getOpenFileName(this, title, folder, filter);
        });
}

void DeviceZR::load()
{
    m_parts.mappings->load([this] { m_selector->selectDefault(); },
                           [this] { return ComboMenuSettings::readAll(*m_parts.settings); });
    if (m_programs != nullptr) {
        m_programs->load();
    }

    m_parts.settings->setUsedBy(QLatin1String(AppInfo::version));
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
    m_files = new MappingFileExchange(*m_parts.mappings, this);
    m_files->addMenuTo(m_selector);
    connect(m_selector, &ComboMapping::saveCurrentMap, this, &DeviceZR::saveCurrentMap);
    connect(m_selector, &ComboMapping::deleteMap, this, &DeviceZR::deleteMap);
    connect(m_selector, &ComboMapping::newMap, this, &DeviceZR::newMap);
    connect(m_parts.mapUpdate, &MapUpdate::dowloadFinished, this, &DeviceZR::dowloadFinished);
    connect(m_parts.mapUpdate, &MapUpdate::updateStarted, m_notices, &MapNotices::showUpdating);
}

void DeviceZR::followMappings()
{
    const MappingSession *mappings = m_parts.mappings;
    connect(mappings, &MappingSession::listChanged, m_selector, &ComboMapping::newMapListReady);
    connect(mappings, &MappingSession::keptChanged, m_notices, &MapNotices::setKept);
    connect(mappings, &MappingSession::endsKnobFieldsChanged, m_notices, &MapNotices::setKnobEnds);
    connect(mappings, &MappingSession::assigned, this, &DeviceZR::updateToolTips);
    connect(mappings, &MappingSession::replaced, this, &DeviceZR::updateToolTips);
    connect(m_menus, &ActionMenus::onActionChanged, this, &DeviceZR::saveCurrentMapAsDefault);
    connect(m_notices, &MapNotices::keep, this, [this] { showWhetherKept(m_parts.mappings->keep()); });
    new TakeBack(*m_parts.mappings, *m_notices, this);
    updateToolTips();
    connect(m_parts.settings, &Settings::writtenChanged, this, &DeviceZR::showWhetherStored);
    showWhetherStored(m_parts.settings->isWritten());
}

void DeviceZR::buildStartupBox()
{
    m_startup = new PageCheckBox(this);
    m_startup->setGeometry(24, 625, 200, 15);
    m_startup->setFont(Look::font(Look::Face::Page, 10));
    m_startup->setStyleSheet(QStringLiteral("QCheckBox { color : rgba(255,255,255,0.40); }"));
    m_startup->setChecked(m_parts.launchOnStartup->isLaunchOnStartup());
    FittingText::show(m_startup, tr("Launch on startup"), tr("Start the program when you log on"));
    new FocusFrame(m_startup);
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
    connect(m_normal, &QSlider::valueChanged, this, &DeviceZR::setKnobSensitivityNormal);
    connect(m_shift1, &QSlider::valueChanged, this, &DeviceZR::setKnobSensitivityShift1);
}

void DeviceZR::importFiles(const QStringList &files)
{
    m_files->import(files);
}

// The sliders are followed already: a first start stores what they then show.
void DeviceZR::showSensitivity()
{
    m_normal->setValue(m_parts.knobSettings->sensitivityNormal());
    m_shift1->setValue(m_parts.knobSettings->sensitivityShift1());
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
    next(m_notices->undoButton());
    if (m_programs != nullptr && m_programs->choice() != nullptr) {
        next(m_programs->choice());
    }
    for (ComboMenu *menu : m_menus->menus()) {
        next(menu);
    }
    next(m_normal);
    next(m_shift1);
    next(m_startup);
}

void DeviceZR::updateToolTips()
{
    QStringList texts;
    for (const PerLayer<shortCut> &control : m_parts.mappings->actions()) {
        texts << ComboMenuEntries::inWords(control).join(QLatin1Char('\n'));
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

void DeviceZR::leaveGame()
{
    m_parts.dispatcher->leaveGame();
}

void DeviceZR::restoreMouse()
{
    m_parts.dispatcher->restoreMouse();
}

void DeviceZR::newMap(ZRButtonMap *buttonMap)
{
    m_parts.mappings->use(*buttonMap);
}

void DeviceZR::loadDefaultMap(ZRButtonMap *buttonMap)
{
    const std::unique_ptr<ZRButtonMap> owned(buttonMap);
    m_parts.mappings->begin(*owned);
}

void DeviceZR::replyFinished(QNetworkReply *reply)
{
    m_parts.mapUpdate->replyFinished(reply);
}

void DeviceZR::dowloadFinished(bool success)
{
    if (success) {
        m_parts.mappings->reloadLibrary();
    }
    m_notices->endUpdating(success);
}

void DeviceZR::showRefusedInput()
{
    QLabel *line =
        PageTexts::add(*this, QString(), {150, 606, 600, 16}, PageTexts::Ink::Bright, 10, QFont::Normal);
    line->setObjectName(QStringLiteral("refusedInput"));
    line->setAlignment(Qt::AlignCenter);
    FittingText::show(
        line, tr("The program in front has more rights and takes no keys. Start Veltrix as administrator."));
    line->show();
}

void DeviceZR::printCurrentView()
{
    m_printer->graphicsEffect()->setEnabled(true);
    MapPrinter::askAndPrint(*this, m_parts.desktop->printsToFiles());
    m_printer->graphicsEffect()->setEnabled(false);
}

void DeviceZR::saveCurrentMap(const QString &name)
{
    const FileResult result = m_parts.mappings->saveAs(name);
    if (!result && m_selector->saveDialog()->isVisible()) {
        m_selector->saveDialog()->showFailure(result.inWords());
    } else {
        m_notices->setFailure(MapNotices::Task::Save,
                              result ? QString() : tr("Not saved: %1").arg(result.inWords()));
    }
}

void DeviceZR::deleteMap(const QString &name)
{
    const FileResult result = m_parts.mappings->remove(name);
    m_notices->setFailure(MapNotices::Task::Delete,
                          result ? QString() : tr("Not deleted: %1").arg(result.inWords()));
}

void DeviceZR::saveCurrentMapAsDefault()
{
    showWhetherKept(m_parts.mappings->keepWithLastStep());
}

void DeviceZR::showWhetherKept(const FileResult &result)
{
    m_notices->setFailure(MapNotices::Task::Keep,
                          result ? QString() : tr("Not kept: %1").arg(result.inWords()));
}

void DeviceZR::showWhetherStored(bool stored)
{
    m_notices->setFailure(MapNotices::Task::Settings,
                          stored ? QString() : tr("The settings cannot be stored."));
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
    const bool done = m_parts.launchOnStartup->isLaunchOnStartup() == on;
    m_notices->setFailure(MapNotices::Task::LaunchOnStartup,
                          done ? QString() : tr("Launch on startup could not be changed."));
    showLaunchOnStartup();
}

void DeviceZR::showLaunchOnStartup()
{
    const QSignalBlocker blocker(m_startup); // reading is no choice of the user's
    m_startup->setChecked(m_parts.launchOnStartup->isLaunchOnStartup());
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
    showLaunchOnStartup();
    m_parts.mapUpdate->check();
}
