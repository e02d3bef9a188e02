#include "engine/KeySynthesis.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "mapping/ShortCut.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_KeySynthesis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sendsOnlyTheLow16Bits_data();
    void sendsOnlyTheLow16Bits();
    void releasesInTheOrderOfThePress();
    void skipsEmptySlots();
    void tapsAnArrowAsTwoEvents();
    void sendsTheLeftButton();

private:
    Recorder m_recorder;
    RecordingInjector m_injector{m_recorder};
    KeySynthesis m_keys{m_injector};

    QString taken() { return m_recorder.takeLines().join(QLatin1String(", ")); }
};

void tst_KeySynthesis::sendsOnlyTheLow16Bits_data()
{
    QTest::addColumn<qint32>("code");
    QTest::addColumn<QString>("output");
    QTest::newRow("a key") << 65 << QStringLiteral("key 65 down");
    QTest::newRow("more than 16 bits") << 0x10041 << QStringLiteral("key 65 down");
    QTest::newRow("largest") << 0xFFFF << QStringLiteral("key 65535 down");
    QTest::newRow("negative") << -2 << QStringLiteral("key 65534 down");
    QTest::newRow("none") << -1 << QString();
    QTest::newRow("never set") << 0 << QString();
    QTest::newRow("0 in the low 16 bits") << 0x20000 << QString();
}

void tst_KeySynthesis::sendsOnlyTheLow16Bits()
{
    QFETCH(qint32, code);
    QFETCH(QString, output);
    m_keys.sendKey(code, true);
    QCOMPARE(taken(), output);
}

void tst_KeySynthesis::releasesInTheOrderOfThePress()
{
    shortCut shortcut;
    shortcut.key1 = 0x11;
    shortcut.key2 = 0x10;
    shortcut.key3 = 0x53;
    m_keys.sendShortcut(shortcut, true);
    QCOMPARE(taken(), QStringLiteral("key 17 down, key 16 down, key 83 down"));
    m_keys.sendShortcut(shortcut, false);
    QCOMPARE(taken(), QStringLiteral("key 17 up, key 16 up, key 83 up"));
}

void tst_KeySynthesis::skipsEmptySlots()
{
    shortCut shortcut;
    shortcut.key1 = 0x11;
    shortcut.key2 = -1;
    shortcut.key3 = 0x53;
    m_keys.sendShortcut(shortcut, true);
    QCOMPARE(taken(), QStringLiteral("key 17 down, key 83 down"));
}

void tst_KeySynthesis::tapsAnArrowAsTwoEvents()
{
    m_keys.tapArrow(ArrowKey::Left);
    m_keys.tapArrow(ArrowKey::Up);
    m_keys.tapArrow(ArrowKey::Right);
    m_keys.tapArrow(ArrowKey::Down);
    QCOMPARE(taken(),
             QStringLiteral("key 37 down, key 37 up, key 38 down, key 38 up, key 39 down, key 39 up, "
                            "key 40 down, key 40 up"));
}

void tst_KeySynthesis::sendsTheLeftButton()
{
    m_keys.leftButton(true);
    m_keys.leftButton(false);
    QCOMPARE(taken(), QStringLiteral("left down, left up"));
}

QTEST_GUILESS_MAIN(tst_KeySynthesis)
#include "tst_KeySynthesis.moc"
