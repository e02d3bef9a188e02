#include "engine/platform/x11/X11InputInjector.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <X11/Xlib.h>

/// Keycodes that were free are free again at the end, whatever happens to the layout meanwhile.
class tst_BorrowedKeycodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aKeycodeThatAMapDidNotShowIsGivenBack();
    void anyEndLeavesThemFree_data();
    void anyEndLeavesThemFree();

private:
    QString borrowed() const;
    void startLayoutChange(QRandomGenerator &random);

    XServer m_server;
    std::unique_ptr<XTestDevices> m_devices;
    QVector<int> m_free;
    std::vector<std::unique_ptr<QProcess>> m_changes;
};

void tst_BorrowedKeycodes::initTestCase()
{
    QVERIFY2(m_server.isRunning(), qPrintable(m_server.error()));
    m_server.exportDisplay();
    m_devices = std::make_unique<XTestDevices>(m_server.display());
    m_free = m_devices->keycodesOf(0);
    QVERIFY(m_free.size() > 10);
}

/// The keycodes that were free and are not, with their symbols.
QString tst_BorrowedKeycodes::borrowed() const
{
    QStringList left;
    for (const int keycode : m_free) {
        if (const quint32 keysym = m_devices->keysymAt(keycode)) {
            left << QStringLiteral("%1: %2").arg(keycode).arg(keysym, 0, 16);
        }
    }
    return left.join(QLatin1String(", "));
}

// Somebody takes the symbol away and puts it back, and a map was read in between.
void tst_BorrowedKeycodes::aKeycodeThatAMapDidNotShowIsGivenBack()
{
    const quint32 f20 = 0xffd1;
    QString problem;
    HeldInput held;
    auto injector = std::make_unique<X11InputInjector>(X11Connection::open(problem), held);
    injector->prepareKeys({0x83});
    QTRY_COMPARE(m_devices->keycodesOf(f20).size(), 1);
    const int first = m_devices->keycodesOf(f20).first();
    m_devices->assign(first, 0xe8);
    QTRY_VERIFY(m_devices->keysymAt(first) == 0xe8 && m_devices->keycodesOf(f20).size() == 1);
    m_devices->assign(first, f20);
    QCOMPARE(m_devices->keycodesOf(f20).size(), 2);
    injector.reset();
    QCOMPARE(borrowed(), QString());
    QVERIFY(held.isEmpty());
}

void tst_BorrowedKeycodes::startLayoutChange(QRandomGenerator &random)
{
    static constexpr const char *layouts[] = {"us", "de", "fr", "us,ru", "ru", "gr", "us,de"};
    const QString layout = QString::fromLatin1(layouts[random.bounded(7)]);
    const QString name = QString::fromLatin1(m_server.display());
    auto process = std::make_unique<QProcess>();
    if (random.bounded(2) == 0) {
        process->start(QStringLiteral("setxkbmap"),
                       {QStringLiteral("-display"), name, QStringLiteral("-layout"), layout});
    } else {
        process->start(QStringLiteral("sh"),
                       {QStringLiteral("-c"),
                        QStringLiteral("setxkbmap -layout %1 -print | xkbcomp -w0 - %2").arg(layout, name)});
    }
    m_changes.push_back(std::move(process));
}

void tst_BorrowedKeycodes::anyEndLeavesThemFree_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 12; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
    for (int i = 0; i < 3; ++i) {
        const quint32 seed = QRandomGenerator::global()->generate();
        QTest::addRow("new seed %u", seed) << seed;
    }
}

void tst_BorrowedKeycodes::anyEndLeavesThemFree()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    QVERIFY(m_server.setLayout(QStringLiteral("us")));
    const QVector<quint16> codes = {0x7c, 0x7d, 0x7e, 0x7f, 0x80, 0xdb, 0xbf, '1', '2', 0x67, 0xba, 0x83};
    QString problem;
    HeldInput held;
    auto injector = std::make_unique<X11InputInjector>(X11Connection::open(problem), held);
    QSet<quint16> down;
    for (int steps = 6 + random.bounded(10); steps > 0; --steps) {
        const quint16 code = codes.at(random.bounded(codes.size()));
        switch (random.bounded(6)) {
        case 0:
            injector->prepareKeys(codes.mid(random.bounded(codes.size())));
            break;
        case 1:
        case 2:
            injector->sendKey(code, !down.contains(code));
            down.contains(code) ? void(down.remove(code)) : void(down.insert(code));
            break;
        case 3:
        case 4:
            startLayoutChange(random);
            break;
        default:
            QTest::qWait(random.bounded(40));
        }
    }
    for (const quint16 code : qAsConst(down)) {
        injector->sendKey(code, false);
    }
    injector.reset();
    for (const auto &change : m_changes) {
        QVERIFY(change->state() == QProcess::NotRunning || change->waitForFinished());
    }
    m_changes.clear();
    QCOMPARE(borrowed(), QString());
    QVERIFY(held.isEmpty());
    QVERIFY(m_devices->nothingHeld());
}

QTEST_GUILESS_MAIN(tst_BorrowedKeycodes)

#include "tst_BorrowedKeycodes.moc"
