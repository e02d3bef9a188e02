#include "engine/platform/x11/X11FocusedProgram.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/XServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <vector>
#include <xcb/xcb.h>

namespace
{

/// Another client: its windows, and what a window manager says of them.
class Windows
{
public:
    Windows()
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    {
    }
    ~Windows() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(Windows)

    /// A window whose class is @p names, each with a zero behind it.
    quint32 add(const QByteArray &names)
    {
        const quint32 window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                            8, quint32(names.size()), names.constData());
        sync();
        return window;
    }
    void remove(quint32 window)
    {
        xcb_destroy_window(m_connection, window);
        sync();
    }
    void set(quint32 window, const char *property, quint32 type, const std::vector<quint32> &values)
    {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                            quint32(values.size()), values.data());
        sync();
    }
    void setText(quint32 window, const char *property, const QByteArray &text)
    {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_STRING, 8,
                            quint32(text.size()), text.constData());
        sync();
    }
    /// Changes the active window between two for @p milliseconds, each time when the server is done with it.
    void activateInTurns(quint32 one, quint32 other, int milliseconds)
    {
        const quint32 property = atom("_NET_ACTIVE_WINDOW");
        const QDeadlineTimer end(milliseconds);
        for (quint32 i = 0; !end.hasExpired(); ++i) {
            const quint32 window = i % 2 == 0 ? one : other;
            xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_root, property, XCB_ATOM_WINDOW, 32, 1,
                                &window);
            sync();
        }
        activate(one);
    }
    void activate(quint32 window) { set(m_root, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window}); }
    void stack(const std::vector<quint32> &windows)
    {
        set(m_root, "_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, windows);
    }
    void belongsHere(quint32 window)
    {
        set(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {quint32(QCoreApplication::applicationPid())});
    }
    void isOfKind(quint32 window, const char *kind)
    {
        set(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom(kind)});
    }
    quint32 root() const { return m_root; }
    void sync() { free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr)); }

private:
    quint32 atom(const char *name)
    {
        auto *reply = xcb_intern_atom_reply(
            m_connection, xcb_intern_atom(m_connection, 0, quint16(qstrlen(name)), name), nullptr);
        const quint32 value = reply->atom;
        free(reply);
        return value;
    }

    xcb_connection_t *m_connection;
    quint32 m_root;
};

const QByteArray gimp("gimp-2.10\0Gimp-2.10\0", 20);
const QByteArray browser("Navigator\0firefox-esr\0", 22);

} // namespace

class tst_X11FocusedProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theActiveWindowsProgramIsTold();
    void whatIsActiveAtTheBeginningIsTold();
    void ownWindowsPanelsAndNoWindowAreNot();
    void theHighestOfTheOthersIsToldWhenOursIsActive();
    void windowsThatVanishAreSilent();
    void aClientThatChangesItWithoutEndStopsNothing();
    void whatAStrangerWritesIsReadWithinBounds_data();
    void whatAStrangerWritesIsReadWithinBounds();
    void nothingIsToldWhileNobodyWatches();
    void otherPropertiesTellNothing();
    void aServerThatGoesIsSaidAndNoMore();
    void withoutAServerItIsSaid();

private:
    QStringList told() const
    {
        QStringList names;
        for (const QList<QVariant> &signal : *m_told) {
            names << signal.at(0).value<FocusedProgram::Program>().name;
        }
        return names;
    }

    std::unique_ptr<XServer> m_server;
    std::unique_ptr<Windows> m_windows;
    std::unique_ptr<X11FocusedProgram> m_focus;
    std::unique_ptr<QSignalSpy> m_told;
    std::unique_ptr<LogCapture> m_log;
};

Q_DECLARE_METATYPE(FocusedProgram::Program)

void tst_X11FocusedProgram::init()
{
    qRegisterMetaType<FocusedProgram::Program>("FocusedProgram::Program");
    m_server = std::make_unique<XServer>();
    m_server->exportDisplay();
    m_windows = std::make_unique<Windows>();
    m_focus = std::make_unique<X11FocusedProgram>();
    m_told = std::make_unique<QSignalSpy>(m_focus.get(), &FocusedProgram::focused);
    m_log = std::make_unique<LogCapture>();
}

void tst_X11FocusedProgram::cleanup()
{
    QCOMPARE(m_log->warnings(), QStringList());
    m_log.reset();
    m_told.reset();
    m_focus.reset();
    m_windows.reset();
    m_server.reset();
}

void tst_X11FocusedProgram::theActiveWindowsProgramIsTold()
{
    const quint32 one = m_windows->add(gimp);
    const quint32 other = m_windows->add(browser);
    QVERIFY(m_focus->isTold());
    m_focus->setWatched(true);
    QCOMPARE(told(), QStringList());
    m_windows->activate(one);
    QTRY_COMPARE(told(), QStringList{QStringLiteral("Gimp")});
    m_windows->activate(other);
    QTRY_COMPARE(told().size(), 2);
    m_windows->activate(one);
    QTRY_COMPARE(
        told(), (QStringList{QStringLiteral("Gimp"), QStringLiteral("Firefox-esr"), QStringLiteral("Gimp")}));
    QCOMPARE(m_told->at(0).at(0).value<FocusedProgram::Program>().id, QStringLiteral("gimp"));
    QCOMPARE(m_told->at(1).at(0).value<FocusedProgram::Program>().id, QStringLiteral("firefox-esr"));
}

void tst_X11FocusedProgram::whatIsActiveAtTheBeginningIsTold()
{
    m_windows->activate(m_windows->add(gimp));
    m_focus->setWatched(true);
    QCOMPARE(told(), QStringList{QStringLiteral("Gimp")}); // within the call
    m_focus->setWatched(true);
    QCOMPARE(told().size(), 1);
}

void tst_X11FocusedProgram::ownWindowsPanelsAndNoWindowAreNot()
{
    const quint32 program = m_windows->add(gimp);
    const quint32 own = m_windows->add(QByteArray("veltrix\0{Veltrix}\0", 18));
    m_windows->belongsHere(own);
    const quint32 panel = m_windows->add(QByteArray("panel\0Panel\0", 12));
    m_windows->isOfKind(panel, "_NET_WM_WINDOW_TYPE_DOCK");
    const quint32 desktop = m_windows->add(QByteArray("desktop\0Desktop\0", 16));
    m_windows->isOfKind(desktop, "_NET_WM_WINDOW_TYPE_DESKTOP");
    m_focus->setWatched(true);
    for (const quint32 window : {own, panel, desktop, quint32(0), program}) {
        m_windows->activate(window);
    }
    QTRY_COMPARE(told(), QStringList{QStringLiteral("Gimp")});
}

void tst_X11FocusedProgram::theHighestOfTheOthersIsToldWhenOursIsActive()
{
    const quint32 low = m_windows->add(browser);
    const quint32 high = m_windows->add(gimp);
    const quint32 own = m_windows->add(gimp);
    m_windows->belongsHere(own);
    const quint32 gone = m_windows->add(browser);
    m_windows->remove(gone);
    m_windows->stack({low, high, gone, own});
    m_windows->activate(own);
    m_focus->setWatched(true);
    QCOMPARE(told(), QStringList{QStringLiteral("Gimp")});
}

void tst_X11FocusedProgram::windowsThatVanishAreSilent()
{
    m_focus->setWatched(true);
    const quint32 there = m_windows->add(gimp);
    for (int i = 0; i < 20; ++i) {
        const quint32 gone = m_windows->add(browser);
        m_windows->remove(gone);
        m_windows->activate(gone);
    }
    m_windows->activate(there);
    QTRY_COMPARE(told(), QStringList{QStringLiteral("Gimp")});
    // cleanup() sees that nothing was logged
}

void tst_X11FocusedProgram::aClientThatChangesItWithoutEndStopsNothing()
{
    const quint32 one = m_windows->add(gimp);
    const quint32 other = m_windows->add(browser);
    m_focus->setWatched(true);
    constexpr int floodMs = 2000;
    const std::unique_ptr<QThread> client(
        QThread::create([this, one, other] { m_windows->activateInTurns(one, other, floodMs); }));
    QElapsedTimer sinceTick;
    qint64 longestGap = 0;
    QTimer tick;
    connect(&tick, &QTimer::timeout, this, [&] { longestGap = std::max(longestGap, sinceTick.restart()); });
    sinceTick.start();
    tick.start(10);
    client->start();
    QTRY_VERIFY(client->isFinished());
    QTest::qWait(50); // the gap that ends with the flood counts, too
    QVERIFY2(longestGap < floodMs / 4, qPrintable(QString::number(longestGap)));
    QVERIFY2(told().size() <= floodMs / 16 + 2, qPrintable(QString::number(told().size())));
    QTRY_COMPARE(told().last(), QStringLiteral("Gimp"));
}

void tst_X11FocusedProgram::whatAStrangerWritesIsReadWithinBounds_data()
{
    QTest::addColumn<QByteArray>("names");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("one name, no zero") << QByteArray("solo") << QStringLiteral("Solo");
    QTest::newRow("no class") << QByteArray("instance\0\0", 10) << QStringLiteral("Instance");
    QTest::newRow("many zeros") << QByteArray(5000, '\0') << QString();
    QTest::newRow("megabytes") << QByteArray(2 * 1024 * 1024, 'a')
                               << QLatin1Char('A') + QString(99, QLatin1Char('a'));
    QTest::newRow("control characters")
        << QByteArray("x\0a\x01\x1b[31mb\n\0", 13) << QStringLiteral("A [31mb");
    QTest::newRow("not UTF-8") << QByteArray("x\0b\xfcro\0", 7) << QStringLiteral("Büro");
    QTest::newRow("UTF-8") << QByteArray("x\0b\xc3\xbcro\0", 8) << QStringLiteral("Büro");
}

void tst_X11FocusedProgram::whatAStrangerWritesIsReadWithinBounds()
{
    QFETCH(QByteArray, names);
    QFETCH(QString, expected);
    m_focus->setWatched(true);
    m_windows->activate(m_windows->add(names));
    QTest::qWait(50);
    m_windows->activate(m_windows->add(gimp));
    QTRY_VERIFY(told().contains(QStringLiteral("Gimp")));
    QCOMPARE(told().size() == 2 ? told().first() : QString(), expected);
}

void tst_X11FocusedProgram::nothingIsToldWhileNobodyWatches()
{
    const quint32 one = m_windows->add(gimp);
    m_windows->activate(one);
    QTest::qWait(50);
    m_focus->setWatched(true);
    m_focus->setWatched(false);
    m_windows->activate(m_windows->add(browser));
    QTest::qWait(50);
    QCOMPARE(told(), QStringList{QStringLiteral("Gimp")});
    m_focus->setWatched(true);
    QCOMPARE(told().last(), QStringLiteral("Firefox-esr"));
}

void tst_X11FocusedProgram::otherPropertiesTellNothing()
{
    m_windows->activate(m_windows->add(gimp));
    m_focus->setWatched(true);
    m_windows->setText(m_windows->root(), "RESOURCE_MANAGER", "x: y");
    m_windows->setText(m_windows->root(), "_NET_ACTIVE_WINDOW", "no window, but a text");
    m_windows->stack({1, 2, 3});
    QTest::qWait(50);
    QCOMPARE(told().size(), 1);
}

void tst_X11FocusedProgram::aServerThatGoesIsSaidAndNoMore()
{
    m_focus->setWatched(true);
    m_server->stop();
    QTRY_VERIFY(!m_log->warnings().isEmpty());
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("the X server has gone away")));
    const std::clock_t before = std::clock();
    QTest::qWait(400);
    QVERIFY(double(std::clock() - before) / CLOCKS_PER_SEC <
            0.2); // a socket that is at its end is always readable
}

void tst_X11FocusedProgram::withoutAServerItIsSaid()
{
    qputenv("DISPLAY", ":none");
    m_focus->setWatched(true);
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("cannot connect to display :none")));
    QCOMPARE(told(), QStringList());
    m_server->exportDisplay();
    m_windows->activate(m_windows->add(gimp));
    m_focus->setWatched(true); // the next time it may work
    QCOMPARE(told(), QStringList{QStringLiteral("Gimp")});
}

QTEST_GUILESS_MAIN(tst_X11FocusedProgram)
#include "tst_X11FocusedProgram.moc"
