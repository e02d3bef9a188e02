#include "XClient.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/XServer.h"
#include "ui/ScreenNote.h"

#include <QApplication>
#include <QTest>

/// The note over another program's window, which has the focus.
class tst_ScreenNote : public QObject
{
    Q_OBJECT

public:
    explicit tst_ScreenNote(const XServer &server)
        : m_server(server)
    {
    }

private Q_SLOTS:
    void theFocusStaysAndAClickGoesThrough();
    void itGoesByItself();

private:
    const XServer &m_server;
};

void tst_ScreenNote::theFocusStaysAndAClickGoesThrough()
{
    KeyWindow below(m_server.display(), 1280, 1024);
    QVERIFY(below.isReady());
    XClient user(m_server.display());
    user.moveMouse(QPoint(640, 500));
    ScreenNote note;
    note.say(QStringLiteral("Shift 1 · Vertical"));
    QVERIFY(QTest::qWaitForWindowExposed(&note));
    QVERIFY(note.geometry().bottom() < 1024 && note.geometry().top() > 800);
    QVERIFY(qAbs(note.geometry().center().x() - 640) <= 2);

    constexpr int a = 38;
    user.tap(a);
    QCOMPARE(KeyWindow::names(below.take(2)),
             (QStringList{QStringLiteral("a down"), QStringLiteral("a up")}));
    user.moveMouse(note.geometry().center());
    user.mouseButton(true);
    user.mouseButton(false);
    const QVector<KeyWindow::Event> clicks = below.take(2);
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(clicks.first().kind, KeyWindow::Kind::Button);
    QVERIFY(note.isVisible());
    QVERIFY(!QApplication::activeWindow());
}

void tst_ScreenNote::itGoesByItself()
{
    ScreenNote note;
    note.say(QStringLiteral("Normal"));
    QTest::qWait(500);
    note.say(QStringLiteral("Shift 1")); // the time begins anew
    QTest::qWait(500);
    QVERIFY(note.isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!note.isVisible(), 1000);
}

int main(int argc, char *argv[])
{
    XServer server;
    if (!server.isRunning()) {
        qCritical("%s", qPrintable(server.error()));
        return 1;
    }
    server.exportDisplay();
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    tst_ScreenNote test(server);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ScreenNote.moc"
