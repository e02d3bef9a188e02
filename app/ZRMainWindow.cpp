#include "app/ZRMainWindow.h"

#include "app/AppLog.h"
#include "app/FindingText.h"
#include "app/WindowPlace.h"
#include "app/frame/AppFonts.h"
#include "app/frame/DragToMove.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"
#include "app/frame/SlidingStackedWidget.h"
#include "app/frame/UserGuide.h"
#include "app/frame/WelcomeWindow.h"
#include "device/SerialProtocol.h"
#include "engine/Clock.h"
#include "game/GameView.h"
#include "net/ZRUpdater.h"
#include "ui/DeviceZR.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QToolTip>

namespace
{

enum Page { WelcomePage, DevicePage, GamePage };

constexpr QSize windowSize(ZRMainWindow::windowWidth, ZRMainWindow::windowHeight);

const QLatin1String closeButtonStyle(
    "QPushButton {                          border: none;                          "
    "background-image: url(:/icons/close.png);                          background-repeat: none;}"
    "                       QPushButton:hover{                          "
    "background-image: url(:/icons/close_hover.png);                        }"
    "                       QPushButton:pressed{                          "
    "background-image: url(:/icons/close_pressed.png);                       }");

} // namespace

ZRMainWindow::ZRMainWindow(std::unique_ptr<SerialProtocol> serial, const DevicePageFactory &devicePage,
                           ZRUpdater *updater, Clock &clock)
    : m_clock(clock)
    , m_serial(std::move(serial))
{
    AppFonts::load();
    // A tool tip takes its ground from the sheet of the page that it belongs to, and its text from here.
    QPalette toolTips = QToolTip::palette();
    toolTips.setColor(QPalette::ToolTipText, Qt::white);
    toolTips.setColor(QPalette::ToolTipBase, Look::accent);
    QToolTip::setPalette(toolTips);

    setFixedSize(windowSize);
    move(WindowPlace::inTheMiddleOf(QGuiApplication::primaryScreen()->geometry(), windowSize));
    setWindowFlags(Qt::FramelessWindowHint);
    setWindowTitle(tr("Veltrix"));

    m_stack = new SlidingStackedWidget(this);
    m_stack->setStyleSheet(QStringLiteral("SlidingStackedWidget {background-color:#5342d9;}"));
    setCentralWidget(m_stack);

    m_welcome = new WelcomeWindow(m_stack);
    m_gameView = new GameView(updater, m_stack);
    connect(m_serial.get(), &SerialProtocol::portRefused, m_welcome, &WelcomeWindow::showRefusal);
    connect(m_serial.get(), &SerialProtocol::findingChanged, this, &ZRMainWindow::showFinding);
    m_devicePage = devicePage(m_stack, m_serial.get(), updater);
    m_stack->addWidget(m_welcome);
    m_stack->addWidget(m_devicePage);
    m_stack->addWidget(m_gameView);
    connect(m_devicePage, &DeviceZR::displayControlPanel, this, &ZRMainWindow::displayControlPanel);
    connect(m_devicePage, &DeviceZR::gameControl, m_gameView, &GameView::gameControl);
    connect(m_gameView, &GameView::left, this, &ZRMainWindow::leaveGame);

    addCloseButton();
    addShortcuts();
    new DragToMove(this);
    setWindowIcon(QIcon(QStringLiteral(":/icons/ZR_logo.png")));
    addTrayIcon();
    connect(qApp, &QGuiApplication::screenRemoved, this, &ZRMainWindow::stayWhole, Qt::QueuedConnection);
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *each : screens) {
        connect(each, &QScreen::geometryChanged, this, &ZRMainWindow::stayWhole, Qt::QueuedConnection);
    }
    if (updater) {
        updater->arm();
    }
}

ZRMainWindow::~ZRMainWindow() = default;

bool ZRMainWindow::isConnected() const
{
    return m_serial->isConnected();
}

void ZRMainWindow::addCloseButton()
{
    auto *button = new QPushButton(this);
    button->setGeometry(5, 5, 16, 16);
    button->setStyleSheet(closeButtonStyle);
    button->setAccessibleName(tr("Hide the window"));
    new FocusFrame(button);
    button->setToolTip(tr("Hide the window; the program goes on"));
    button->setObjectName(QStringLiteral("close"));
    connect(button, &QPushButton::clicked, this, &ZRMainWindow::putAway);
}

void ZRMainWindow::addShortcuts()
{
    const auto add = [this](const char *keys, auto slot) {
        auto *shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        connect(shortcut, &QShortcut::activated, this, slot);
    };
    add("Ctrl+Q", &ZRMainWindow::close);
    add("Ctrl+W", &ZRMainWindow::putAway);
}

void ZRMainWindow::addTrayIcon()
{
    m_trayMenu = std::make_unique<QMenu>();
    connect(m_trayMenu->addAction(tr("Quit")), &QAction::triggered, this, &ZRMainWindow::close);

    m_tray = new QSystemTrayIcon(QIcon(QStringLiteral(":/icons/16.png")), this);
    connect(m_tray, &QSystemTrayIcon::activated, this, &ZRMainWindow::showOnFront);
    m_tray->setContextMenu(m_trayMenu.get());
    m_tray->setVisible(true);
    if (!QSystemTrayIcon::isSystemTrayAvailable()) {
        auto *button = findChild<QPushButton *>(QStringLiteral("close"));
        button->setToolTip(
            tr("Hide the window; the program goes on. Start it once more to bring the window back."));
        qCInfo(lcApp)
            << "This desktop has no tray: start the program once more to bring a hidden window back";
    }
}

void ZRMainWindow::showFinding()
{
    const DeviceFinding &finding = m_serial->finding();
    m_welcome->showFinding(
        FindingText::sentence(finding), FindingText::isProblem(finding),
        UserGuide::troubleshooting(QCoreApplication::applicationDirPath(), FindingText::section(finding)));
}

void ZRMainWindow::displayControlPanel(const QString &deviceName)
{
    m_deviceName = deviceName;
    qCInfo(lcApp).noquote() << "Set sliding index" << deviceName;
    m_gameView->setRunning(false);

    if (deviceName.isEmpty()) {
        m_welcome->setConnected(false);
        m_stack->slideInIdx(WelcomePage);
    } else if (deviceName == QLatin1String("ZR")) {
        m_welcome->setConnected(true);
        slideLater(DevicePage);
    } else if (deviceName == QLatin1String("GAME")) {
        m_welcome->setConnected(true);
        slideLater(GamePage);
    }
}

// Not taken back when the name changes meanwhile, on purpose.
void ZRMainWindow::slideLater(int page)
{
    m_clock.singleShot(slideDelay, this, [this, page] {
        if (page == GamePage) {
            m_gameView->setRunning(true);
            m_gameView->setFocus();
        }
        m_stack->slideInIdx(page);
    });
}

// The chord on the device ends the game as well; without a device only this does.
void ZRMainWindow::leaveGame()
{
    if (m_serial->isConnected()) {
        m_devicePage->leaveGame();
    } else {
        displayControlPanel(QString());
    }
}

void ZRMainWindow::placeWhereThePointerIs()
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    const QRect place = (screen != nullptr ? screen : QGuiApplication::primaryScreen())->geometry();
    if (!WindowPlace::isWhole(geometry(), {place})) {
        move(WindowPlace::inTheMiddleOf(place, windowSize));
    }
}

// A screen has gone, or has become smaller.
void ZRMainWindow::stayWhole()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    QVector<QRect> places;
    for (const QScreen *screen : screens) {
        places.append(screen->geometry());
    }
    if (isVisible() && !WindowPlace::isWhole(geometry(), places)) {
        placeWhereThePointerIs();
    }
}

void ZRMainWindow::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        placeWhereThePointerIs();
    }
    QMainWindow::showEvent(event);
}

void ZRMainWindow::showOnFront()
{
    const bool menuOpen = m_trayMenu->isVisible();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    if (menuOpen && !m_trayMenu->isVisible()) {
        // The click that brings the window has opened the menu, and a window that is shown closes menus.
        m_trayMenu->popup(m_trayMenu->pos());
    }
    // What the toolkit asks of the X server waits for the next thing that is drawn or comes in, and a covered
    // window has neither.
    update();
}

void ZRMainWindow::putAway()
{
    hide();
    if (!QSystemTrayIcon::isSystemTrayAvailable()) {
        Q_EMIT hiddenWithoutTray();
    }
}

void ZRMainWindow::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous()) {
        // Asked for by the user, with Alt+F4 or the window manager: it is what the button in the corner does.
        event->ignore();
        putAway();
        return;
    }
    // Reached by "Quit" and by the end of the session, with the window shown or hidden, and whatever else is
    // open.
    QMainWindow::closeEvent(event);
    QCoreApplication::quit();
}
