#pragma once

#include <QMainWindow>
#include <QString>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>

class Clock;
class DeviceZR;
class GameView;
class SerialProtocol;
class SlidingStackedWidget;
class WelcomeWindow;
class ZRUpdater;

/// The program's window: a stack of sliding pages (0 welcome, 1 device, 2 game), a button that hides it, and
/// the tray icon that brings it back and ends the program.
///
/// Owns the device's link and hands it to the device page. Lives for the whole run.
class ZRMainWindow : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ZRMainWindow)

public:
    /// Builds the device page, as a child of its first argument, on the link and the updater.
    using DevicePageFactory = std::function<DeviceZR *(QWidget *, SerialProtocol *, ZRUpdater *)>;

    static constexpr int windowWidth = 900; ///< of the fixed size; the device pixels depend on the screen
    static constexpr int windowHeight = 650;
    static constexpr int slideDelay = 1000; ///< ms; lets the user see the welcome page's indicator change

    /// @p updater may be null. It and @p clock must outlive the window.
    ZRMainWindow(std::unique_ptr<SerialProtocol> serial, const DevicePageFactory &devicePage,
                 ZRUpdater *updater, Clock &clock);
    ~ZRMainWindow() override;

    DeviceZR *devicePage() const { return m_devicePage; }

    /// Whether the device is there.
    bool isConnected() const;

public Q_SLOTS:
    /// Shows the page for this name: none the welcome page, "ZR" the device page, "GAME" the game; others are
    /// ignored.
    void displayControlPanel(const QString &deviceName);

    /// Shows the window above the others, without taking the focus.
    void showOnFront();

    /// Hides the window; the program goes on.
    void putAway();

Q_SIGNALS:
    /// The user has hidden the window, and there is no tray icon to bring it back.
    void hiddenWithoutTray();

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addCloseButton();
    void addShortcuts();
    void leaveGame();
    void placeWhereThePointerIs();
    void stayWhole();
    void addTrayIcon();
    void showFinding();
    void slideLater(int page);

    Clock &m_clock;
    std::unique_ptr<SerialProtocol> m_serial;
    QString m_deviceName;
    SlidingStackedWidget *m_stack;
    WelcomeWindow *m_welcome;
    GameView *m_gameView;
    DeviceZR *m_devicePage;
    std::unique_ptr<QMenu> m_trayMenu;
    QSystemTrayIcon *m_tray = nullptr;
};
