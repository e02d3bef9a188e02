#include "engine/platform/x11/CapturedKey.h"
#include "engine/platform/x11/KeysymTable.h"

#include <QtTest>

#include <X11/keysym.h>

namespace
{

CapturedKey key(quint32 pressed, quint32 plain, quint32 shifted)
{
    CapturedKey captured;
    captured.pressed = pressed;
    captured.plain = plain;
    captured.shifted = shifted;
    return captured;
}

} // namespace

class tst_CapturedKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void modifiersChangeNothing();
    void theKeypadFollowsNumLock();
    void theKeypadsDecimalKeyIsTheLayouts();
    void digitsThatNeedShiftAreDigits();
    void aKeyOfItsOwnComesBeforeTheDigitAboveIt();
    void anotherScriptsLettersAreThoseOfTheOtherGroup();
    void anotherScriptsLettersAreElseThoseOfTheirPlace();
    void latin1KeysWithoutACodeGetTheirCharacter();
    void deadKeysAreTheirAccent();
    void modifiersHaveNoSideButAltGr();
    void withoutALayoutTheEventsSymbolCounts();
    void whatIsNoKeyHasNoCode();
    void everyCodeOfTheTableIsFoundAgain();
};

void tst_CapturedKey::modifiersChangeNothing()
{
    QCOMPARE(key(XK_A, XK_a, XK_A).virtualKey(), 65);
    QCOMPARE(key(XK_at, XK_q, XK_Q).virtualKey(), 81);
    QCOMPARE(key(XK_exclam, XK_1, XK_exclam).virtualKey(), 49);
    QCOMPARE(key(XK_ISO_Left_Tab, XK_Tab, XK_ISO_Left_Tab).virtualKey(), 9);
    QCOMPARE(key(XK_Break, XK_Pause, XK_Break).virtualKey(), 19);
    QCOMPARE(key(XK_Sys_Req, XK_Print, XK_Sys_Req).virtualKey(), 44);
}

void tst_CapturedKey::theKeypadFollowsNumLock()
{
    QCOMPARE(key(XK_KP_End, XK_KP_End, XK_KP_1).virtualKey(), 35);
    QCOMPARE(key(XK_KP_1, XK_KP_End, XK_KP_1).virtualKey(), 97);
    QCOMPARE(key(XK_KP_Begin, XK_KP_Begin, XK_KP_5).virtualKey(), 12);
    QCOMPARE(key(XK_KP_Enter, XK_KP_Enter, 0).virtualKey(), 13);
    QCOMPARE(key(XK_KP_Delete, XK_KP_Delete, XK_KP_Decimal).virtualKey(), 46);
}

void tst_CapturedKey::theKeypadsDecimalKeyIsTheLayouts()
{
    CapturedKey comma = key(XK_KP_Separator, XK_KP_Delete, XK_KP_Separator);
    QCOMPARE(comma.virtualKey(), 0x6c);
    comma.keypadDecimal = XK_KP_Separator;
    QCOMPARE(comma.virtualKey(), 0x6e);
    // Some layouts put a plain point there, which elsewhere stays one.
    CapturedKey point = key(XK_period, XK_KP_Delete, XK_period);
    point.keypadDecimal = XK_period;
    point.isKeypadDecimal = true;
    QCOMPARE(point.virtualKey(), 0x6e);
    CapturedKey other = key(XK_period, XK_period, XK_colon);
    other.keypadDecimal = XK_period;
    QCOMPARE(other.virtualKey(), 0xbe);
}

void tst_CapturedKey::digitsThatNeedShiftAreDigits()
{
    QCOMPARE(key(XK_ampersand, XK_ampersand, XK_1).virtualKey(), 49);
    QCOMPARE(key(XK_eacute, XK_eacute, XK_2).virtualKey(), 50);
    QCOMPARE(key(XK_2, XK_eacute, XK_2).virtualKey(), 50);
}

void tst_CapturedKey::aKeyOfItsOwnComesBeforeTheDigitAboveIt()
{
    QCOMPARE(key(XK_minus, XK_minus, XK_6).virtualKey(), 0xbd);
}

void tst_CapturedKey::anotherScriptsLettersAreThoseOfTheOtherGroup()
{
    CapturedKey captured = key(XK_Cyrillic_ef, XK_Cyrillic_ef, XK_Cyrillic_EF);
    captured.otherGroup = XK_q; // a French one
    captured.usSymbol = 'a';
    QCOMPARE(captured.virtualKey(), 81);
}

void tst_CapturedKey::anotherScriptsLettersAreElseThoseOfTheirPlace()
{
    CapturedKey captured = key(XK_Cyrillic_ef, XK_Cyrillic_ef, XK_Cyrillic_EF);
    captured.usSymbol = 'a';
    QCOMPARE(captured.virtualKey(), 65);
    captured = key(XK_Cyrillic_ha, XK_Cyrillic_ha, XK_Cyrillic_HA);
    captured.usSymbol = '[';
    QCOMPARE(captured.virtualKey(), 0xdb);
}

void tst_CapturedKey::latin1KeysWithoutACodeGetTheirCharacter()
{
    QCOMPARE(key(XK_udiaeresis, XK_udiaeresis, XK_Udiaeresis).virtualKey(), 0x1fc);
    QCOMPARE(key(XK_apostrophe, XK_numbersign, XK_apostrophe).virtualKey(), 0x123);
    QCOMPARE(key(XK_ssharp, XK_ssharp, XK_question).virtualKey(), 0x1df);
}

void tst_CapturedKey::deadKeysAreTheirAccent()
{
    QCOMPARE(key(XK_dead_circumflex, XK_dead_circumflex, XK_degree).virtualKey(), 0x15e);
    QCOMPARE(key(XK_dead_acute, XK_dead_acute, XK_dead_grave).virtualKey(), 0x1b4);
    QCOMPARE(key(XK_dead_grave, XK_dead_grave, XK_dead_tilde).virtualKey(), 0xc0);
}

void tst_CapturedKey::modifiersHaveNoSideButAltGr()
{
    for (const quint32 shift : {XK_Shift_L, XK_Shift_R}) {
        QCOMPARE(key(shift, shift, 0).virtualKey(), 16);
    }
    for (const quint32 control : {XK_Control_L, XK_Control_R}) {
        QCOMPARE(key(control, control, 0).virtualKey(), 17);
    }
    for (const quint32 alt : {XK_Alt_L, XK_Alt_R, XK_Meta_L}) {
        QCOMPARE(key(alt, alt, 0).virtualKey(), 18);
    }
    QCOMPARE(key(XK_ISO_Level3_Shift, XK_ISO_Level3_Shift, 0).virtualKey(), 165);
    QCOMPARE(key(XK_Super_L, XK_Super_L, 0).virtualKey(), 91);
    QCOMPARE(key(XK_Super_R, XK_Super_R, 0).virtualKey(), 92);
}

void tst_CapturedKey::withoutALayoutTheEventsSymbolCounts()
{
    QCOMPARE(key(XK_a, 0, 0).virtualKey(), 65);
    QCOMPARE(key(XK_Escape, 0, 0).virtualKey(), 27);
}

void tst_CapturedKey::whatIsNoKeyHasNoCode()
{
    QCOMPARE(CapturedKey().virtualKey(), 0);
    QCOMPARE(key(XK_Cyrillic_ef, XK_Cyrillic_ef, 0).virtualKey(), 0);
    QCOMPARE(key(XK_space + 0xfd00, 0, 0).virtualKey(), 0);
}

void tst_CapturedKey::everyCodeOfTheTableIsFoundAgain()
{
    const QMap<int, int> sameKey = {{0x2a, 0x2c}, {0xa0, 0x10}, {0xa1, 0x10}, {0xa2, 0x11}, {0xa3, 0x11},
                                    {0xa4, 0x12}, {0xa5, 0x12}, {0xc1, 0xbf}, {0xc2, 0x6c}};
    int found = 0;
    for (int code = 0; code < int(KeysymTable::codes); ++code) {
        const KeysymTable::Symbols symbols = KeysymTable::symbolsOf(quint16(code));
        if (!symbols.isEmpty()) {
            ++found;
            QCOMPARE(key(symbols.keysym, symbols.keysym, symbols.shifted).virtualKey(),
                     sameKey.value(code, code));
        }
    }
    QVERIFY(found > 250);
}

QTEST_APPLESS_MAIN(tst_CapturedKey)

#include "tst_CapturedKey.moc"
