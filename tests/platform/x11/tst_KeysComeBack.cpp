#include "engine/platform/x11/X11Desktop.h"
#include "engine/platform/x11/X11InputInjector.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QTest>

/// What is recorded of a key, on a real server and with its layouts, presses that key again.
class tst_KeysComeBack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theSameKeyIsPressedAgain_data();
    void theSameKeyIsPressedAgain();
    void aKeyWithoutACodeIsNone();

private:
    XServer m_server;
    X11Desktop m_desktop;
    std::unique_ptr<KeyWindow> m_window;
    std::unique_ptr<XTestDevices> m_devices;
};

void tst_KeysComeBack::initTestCase()
{
    QVERIFY2(m_server.isRunning(), qPrintable(m_server.error()));
    m_server.exportDisplay();
    m_window = std::make_unique<KeyWindow>(m_server.display());
    m_devices = std::make_unique<XTestDevices>(m_server.display());
    QVERIFY(m_window->isReady());
    QVERIFY(m_devices->isReady());
}

void tst_KeysComeBack::theSameKeyIsPressedAgain_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    for (const char *layout :
         {"us", "de", "fr", "hr", "hu", "tr", "cz", "sk", "lt", "vn", "br", "th", "jp"}) {
        QTest::addRow("%s", layout) << QString::fromLatin1(layout) << false;
        QTest::addRow("%s, NumLock on", layout) << QString::fromLatin1(layout) << true;
    }
}

void tst_KeysComeBack::theSameKeyIsPressedAgain()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    QVERIFY(m_server.setLayout(layout));
    m_devices->setNumLock(numLock);
    HeldInput held;
    QString problem;
    X11InputInjector injector(X11Connection::open(problem), held);
    // The rows of letters and digits, and the key between the left Shift and Z.
    QVector<uint> keycodes = {49, 51, 94};
    for (const auto &row :
         {qMakePair(10U, 21U), qMakePair(24U, 35U), qMakePair(38U, 48U), qMakePair(52U, 61U)}) {
        for (uint keycode = row.first; keycode <= row.second; ++keycode) {
            keycodes << keycode;
        }
    }
    QStringList wrong;
    for (const uint keycode : qAsConst(keycodes)) {
        const int code = m_desktop.virtualKeyFromNative(m_devices->keysymAt(int(keycode)), keycode);
        m_window->takeAll();
        injector.sendKey(quint16(code), true);
        injector.sendKey(quint16(code), false);
        const uint seen = m_window->next().code;
        // The two backslashes of a us keyboard are one to programs.
        const bool twin = keycode == 94 && m_devices->keysymAt(int(seen)) == m_devices->keysymAt(94);
        if (code == 0 || (seen != keycode && !twin)) {
            wrong << QStringLiteral("key %1: code %2 presses %3").arg(keycode).arg(code).arg(seen);
        }
    }
    QCOMPARE(wrong.join(QLatin1String("; ")), QString());
    m_window->takeAll();
    m_devices->setNumLock(false);
}

void tst_KeysComeBack::aKeyWithoutACodeIsNone()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us")));
    QCOMPARE(m_desktop.virtualKeyFromNative(0x1008ff2e, 158), 0); // WWW
    QCOMPARE(m_desktop.virtualKeyFromNative(0x1008ffb5, 255), 0); // RFKill
    QCOMPARE(m_desktop.virtualKeyFromNative(0x1008ff02, 233), 0); // brightness
    QCOMPARE(m_desktop.virtualKeyFromNative(0xfe61, 0), 0);       // dead hook
    QCOMPARE(m_desktop.virtualKeyFromNative(0xffed, 0), 0);       // Hyper
}

QTEST_GUILESS_MAIN(tst_KeysComeBack)

#include "tst_KeysComeBack.moc"
