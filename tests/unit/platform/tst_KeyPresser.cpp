#include "engine/platform/xkb/KeyPresser.h"
#include "tests/support/main/Main.h"

#include <QTest>

namespace
{

class RecordingSink : public KeycodeSink
{
public:
    void sendKeycode(quint8 keycode, bool down) override
    {
        calls << QStringLiteral("%1 %2").arg(keycode).arg(down ? QLatin1String("down") : QLatin1String("up"));
    }
    void latchModifiers(quint8 modifiers) override { calls << QStringLiteral("latch %1").arg(modifiers); }
    void assign(quint8, quint32, quint32) override { calls << QStringLiteral("assign"); }

    QStringList calls;
};

constexpr quint8 shiftKey = 50;
constexpr quint8 keypadKey = 87;
constexpr quint8 shift = 0x01;
constexpr quint8 numLock = 0x10;
constexpr quint16 numpad1 = 0x61;
constexpr quint32 symbolOf1 = 0xffb1; // of the keypad

} // namespace

class tst_KeyPresser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numLockIsLatchedForTheKeyAndNotForItsModifiers();
};

void tst_KeyPresser::numLockIsLatchedForTheKeyAndNotForItsModifiers()
{
    KeyboardMap map;
    map.setNumLockMask(numLock);
    map.setModifierKey(0, shiftKey);
    map.add(symbolOf1, {keypadKey, false, shift | numLock});
    RecordingSink sink;
    KeyPresser presser(sink);
    presser.setMap(map);
    presser.sendKey(numpad1, true);
    presser.sendKey(numpad1, false);
    const QStringList wanted{QStringLiteral("50 down"), QStringLiteral("latch 16"), QStringLiteral("87 down"),
                             QStringLiteral("87 up"), QStringLiteral("50 up")};
    QCOMPARE(sink.calls, wanted);
}

QTEST_GUILESS_MAIN(tst_KeyPresser)
#include "tst_KeyPresser.moc"
