#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/RunOnServer.h"
#include "tests/support/xserver/XClient.h"
#include "ui/ScreenNote.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTest>

namespace
{

/// When a widget was hidden.
class Hidings : public QObject
{
public:
    void begin() { m_clock.start(); }
    qint64 time() const { return m_time; } ///< ms since begin()

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Hide && m_clock.isValid()) {
            m_time = m_clock.elapsed();
        }
        return false;
    }

private:
    QElapsedTimer m_clock;
    qint64 m_time = 0;
};

} // namespace

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
    Hidings hidings;
    note.installEventFilter(&hidings);
    note.say(QStringLiteral("Normal"));
    QTest::qWait(ScreenNote::shownFor / 2);
    note.say(QStringLiteral("Shift 1")); // the time begins anew
    hidings.begin();
    QVERIFY(note.isVisible());
    QTRY_VERIFY(!note.isVisible());
    // A busy machine may only make it later, a coarse timer a twentieth earlier.
    QVERIFY2(hidings.time() >= ScreenNote::shownFor - ScreenNote::shownFor / 20,
             qPrintable(QString::number(hidings.time())));
}

int main(int argc, char *argv[])
{
    return runOnServer<tst_ScreenNote>(argc, argv);
}

#include "tst_ScreenNote.moc"
