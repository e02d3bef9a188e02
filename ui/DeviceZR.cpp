#include "ui/DeviceZR.h"

#include "app/frame/AppInfo.h"
#include "app/frame/ClickableLabel.h"
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
#include "ui/BoxMarks.h"
#include "ui/ChangesOnScreen.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/ComboMenuEntries.h"
#include "ui/ComboMenuSettings.h"
#include "ui/ControlTip.h"
#include "ui/DeviceIndicators.h"
#include "ui/DevicePicture.h"
#include "ui/MapNotices.h"
#include "ui/MapPrinter.h"
#include "ui/MappingFileExchange.h"
#include "ui/MappingInUse.h"
#include "ui/NameLine.h"
#include "ui/OverlayDialog.h"
#include "ui/PageTexts.h"
#include "ui/ProgramChoice.h"
#include "ui/ProgramsOnPage.h"
#include "ui/SaveDialog.h"
#include "ui/SensitivitySliders.h"
#include "ui/SentLine.h"
#include "ui/StartupBox.h"
#include "ui/TakeBack.h"

#include <QCheckBox>
#include <QChildEvent>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGraphicsOpacityEffect>
#include <QSlider>

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
    m_notice = PageTexts::addNotice(*this);
    PageTexts::showNotice(*m_notice, m_parts.notice, "notice");
    m_nameLine = new NameLine(this);
    buildBottom();
    m_indicators = new DeviceIndicators(this);
    connectIndicators();
    m_boxMarks = new BoxMarks(m_menus->menus(), this);
    connectBoxes();
    m_files->addDragTo(m_nameLine);
    m_files->addMenuTo(m_nameLine);
    connectDevice(serial);
    m_sliders->showStored(*m_parts.knobSettings); // they are followed already: a first start stores this
    followMappings();
    followMappingInUse();
    if (m_parts.programMappings != nullptr) {
        m_programs = new ProgramsOnPage(*m_parts.programSwitch, *m_parts.programMappings, *m_notices, this);
    }
    orderFocus();
    m_parts.mappings->setFileChooser(
        [this](const QString &title, const QString &folder, const QString &filter) {
            const ProgramsOnPage::Asking asking(m_programs);
            return QFileDialog::getOpenFileName(this, title, folder, filter);
        });
    m_parts.settings->setUsedBy(QLatin1String(AppInfo::version));
}

void DeviceZR::load()
{
    m_parts.mappings->load([this] { m_selector->selectDefault(); },
                           [this] { return ComboMenuSettings::readAll(*m_parts.settings); },
                           m_inUse->noted());
    if (m_programs != nullptr) {
        m_programs->load();
    }
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
    m_printer->setToolTip(ControlTip::text(tr("Print"), {tr("Print what the buttons do")}, QString()));
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

void DeviceZR::followMappingInUse()
{
    m_inUse = new MappingInUse(*m_parts.mappings, *m_parts.settings, this);
    connect(m_inUse, &MappingInUse::changed, this, [this] {
        m_nameLine->setMapping(m_inUse->name(), m_inUse->isChanged());
        m_selector->setInUse(m_inUse->listed());
    });
}

void DeviceZR::buildBottom()
{
    m_startup = new StartupBox(*m_parts.launchOnStartup, this);
    connect(m_startup, &StartupBox::toggled, this, &DeviceZR::setLaunchOnStartup);
    m_changes = new ChangesOnScreen(*m_parts.dispatcher, *m_parts.settings, this);
    m_sliders = new SensitivitySliders(this);
    connect(m_sliders->normal(), &QSlider::valueChanged, this, &DeviceZR::setKnobSensitivityNormal);
    connect(m_sliders->shift1(), &QSlider::valueChanged, this, &DeviceZR::setKnobSensitivityShift1);
    m_sent = new SentLine(this);
}

void DeviceZR::importFiles(const QStringList &files)
{
    m_files->import(files);
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
    connect(dispatcher, &EventDispatcher::knobModeChanged, m_nameLine, &NameLine::setKnobMode);
    connect(dispatcher, &EventDispatcher::acted, m_sent, &SentLine::tell);
    connect(dispatcher, &EventDispatcher::displayControlPanel, this, &DeviceZR::displayControlPanel);
    connect(dispatcher, &EventDispatcher::gameControl, this, &DeviceZR::gameControl);
}

void DeviceZR::connectBoxes()
{
    connect(m_parts.dispatcher, &EventDispatcher::buttonHeld, m_boxMarks, &BoxMarks::setHeld);
    connect(m_parts.dispatcher, &EventDispatcher::layerChanged, m_boxMarks, &BoxMarks::setLayer);
    connect(m_picture, &DevicePicture::clicked, this,
            [this](int control) { m_menus->menus().at(control)->dislayMenu(); });
    m_picture->setToolTipHost(ControlTip::install(this));
}

// The dialogs dim the page when they come; undoing that is up to the page, as is what they work with. Most
// are made only when they are asked for, and each is polished once, before it is first seen.
void DeviceZR::childEvent(QChildEvent *event)
{
    ZRBaseWindow::childEvent(event);
    // Polished it is whole, and its class known.
    auto *dialog =
        event->polished()
            ? qobject_cast<OverlayDialog *>(event->child()) // clazy:exclude=child-event-qobject-cast
            : nullptr;
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
    next(m_sliders->normal());
    next(m_sliders->shift1());
    next(m_startup);
    next(m_changes->box());
}

void DeviceZR::updateToolTips()
{
    QStringList texts;
    for (const PerLayer<shortCut> &control : m_parts.mappings->actions()) {
        texts << ComboMenuEntries::inWords(control).join(QLatin1Char('\n'));
    }
    m_picture->setControlToolTips(texts);
}

void DeviceZR::onDeviceConnected(const QString &deviceName)
{
    if (deviceName.isEmpty()) {
        m_parts.dispatcher->onDeviceLost();
        const QList<OverlayDialog *> dialogs = findChildren<OverlayDialog *>();
        for (OverlayDialog *dialog : dialogs) {
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
    PageTexts::showNotice(
        *m_notice,
        tr("The program in front has more rights and takes no keys. Start Veltrix as administrator."),
        "refusedInput");
}

void DeviceZR::printCurrentView()
{
    const ProgramsOnPage::Asking asking(m_programs);
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
    m_startup->refresh();
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
    m_startup->refresh();
    m_parts.mapUpdate->check();
}
