#pragma once

#include "app/frame/AppFonts.h"
#include "app/frame/ZRBaseWindow.h"
#include "engine/platform/x11/X11Desktop.h"
#include "tests/support/xserver/XClient.h"
#include "tests/support/xserver/XServer.h"
#include "ui/ShortcutKey.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <QVector>

#include <memory>

// Keycodes of the server's keyboard, which are those of every evdev keyboard.
enum Keycode {
    EscapeKey = 9,
    DigitRow1 = 10,
    DigitRow2 = 11,
    DigitRow6 = 15,
    TabKey = 23,
    RowAbove1 = 24,  // Q on a us keyboard
    RowAbove11 = 34, // [
    ReturnKey = 36,
    LeftCtrl = 37,
    HomeRow1 = 38,  // A
    HomeRow10 = 47, // ;
    ShiftL = 50,
    AltL = 64,
    Keypad1 = 87,
    KeypadDecimal = 91,
    ShiftR = 62,
    AltR = 108,
    SuperL = 133,
};

struct PageWindow : QWidget {
    PageWindow()
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , page(new ZRBaseWindow(nullptr, this))
    {
        const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
        setFixedSize(900, 650);
        setStyleSheet(QStringLiteral("background-color:#5342d9; color: white;"));
        page->setGeometry(rect());
        auto *text = new QLabel(QStringLiteral("<h1>The page behind</h1>"), page);
        text->setGeometry(330, 90, 300, 60);
        move((screen.width() - 900) / 2, (screen.height() - 650) / 2);
        show();
    }
    ZRBaseWindow *page;
};

/// The X server, and what its answers were.
class WatchedDesktop : public Desktop
{
public:
    int virtualKeyFromNative(quint32 native, quint32 scan) const override
    {
        codes << m_server.virtualKeyFromNative(native, scan);
        return codes.last();
    }
    bool isComposited() const override { return m_server.isComposited(); }

    mutable QVector<int> codes; // what the dialog's key presses were taken for

private:
    X11Desktop m_server;
};

/// The shortcut dialog over its page on an X server, and a user with a mouse and a keyboard.
class DialogOnServer
{
protected:
    explicit DialogOnServer(XServer &server)
        : m_server(server)
    {
    }

    void beginAll()
    {
        AppFonts::load();
        m_user = std::make_unique<XClient>(m_server.display());
    }
    void begin()
    {
        QVERIFY(m_server.setLayout(QStringLiteral("us")));
        m_desktop.codes.clear();
        m_window = std::make_unique<PageWindow>();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_dialog = std::make_unique<ShortcutKey>(m_window->page);
        m_dialog->setDesktop(&m_desktop);
        QVERIFY(isFree());
    }
    void end()
    {
        m_user->unlockAll();
        m_dialog.reset();
        m_window.reset();
        QVERIFY(isFree());
    }
    void openShortcut(int type = 0)
    {
        m_dialog->show(type);
        QTRY_VERIFY(isTaken());
    }
    bool isTaken() { return m_user->mouseIsTaken() && m_user->keyboardIsTaken(); }
    bool isFree() { return !m_user->mouseIsTaken() && !m_user->keyboardIsTaken(); }

    XServer &m_server;
    std::unique_ptr<XClient> m_user;
    std::unique_ptr<PageWindow> m_window;
    std::unique_ptr<ShortcutKey> m_dialog;
    WatchedDesktop m_desktop;
};
