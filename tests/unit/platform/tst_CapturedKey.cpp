#include "engine/platform/xkb/CapturedKey.h"
#include "engine/platform/xkb/KeysymTable.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <X11/keysym.h>

namespace
{

CapturedKey key(quint32 pressed, quint32 plain)
{
    CapturedKey captured;
    captured.pressed = pressed;
    captured.plain = plain;
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
    void digitsThatNeedShiftAreWhatTheirKeyTypes();
    void twoKeysOfOneCodeAreToldApart();
    void lettersOfManyScriptsGetTheirCharacter();
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
    QCOMPARE(key(XK_A, XK_a).virtualKey(), 65);
    QCOMPARE(key(XK_at, XK_q).virtualKey(), 81);
    QCOMPARE(key(XK_exclam, XK_1).virtualKey(), 49);
    QCOMPARE(key(XK_ISO_Left_Tab, XK_Tab).virtualKey(), 9);
    QCOMPARE(key(XK_Break, XK_Pause).virtualKey(), 19);
    QCOMPARE(key(XK_Sys_Req, XK_Print).virtualKey(), 44);
}

void tst_CapturedKey::theKeypadFollowsNumLock()
{
    QCOMPARE(key(XK_KP_End, XK_KP_End).virtualKey(), 35);
    QCOMPARE(key(XK_KP_1, XK_KP_End).virtualKey(), 97);
    QCOMPARE(key(XK_KP_Begin, XK_KP_Begin).virtualKey(), 12);
    QCOMPARE(key(XK_KP_Enter, XK_KP_Enter).virtualKey(), 13);
    QCOMPARE(key(XK_KP_Delete, XK_KP_Delete).virtualKey(), 46);
}

void tst_CapturedKey::theKeypadsDecimalKeyIsTheLayouts()
{
    CapturedKey comma = key(XK_KP_Separator, XK_KP_Delete);
    QCOMPARE(comma.virtualKey(), 0x6c);
    KeyboardMap map;
    map.setKeypadDecimal(XK_KP_Separator);
    QCOMPARE(comma.virtualKey(map), 0x6e);
    // Some layouts put a plain point there, which elsewhere stays one.
    map.setKeypadDecimal(XK_period);
    CapturedKey point = key(XK_period, XK_KP_Delete);
    point.isKeypadDecimal = true;
    QCOMPARE(point.virtualKey(map), 0x6e);
    QCOMPARE(key(XK_period, XK_period).virtualKey(map), 0xbe);
}

void tst_CapturedKey::digitsThatNeedShiftAreWhatTheirKeyTypes()
{
    // All ten alike: a French keyboard's 1, 2, 4 and 6.
    QCOMPARE(key(XK_ampersand, XK_ampersand).virtualKey(), 0x126);
    QCOMPARE(key(XK_2, XK_eacute).virtualKey(), 0x1e9);
    QCOMPARE(key(XK_apostrophe, XK_apostrophe).virtualKey(), 0xde);
    QCOMPARE(key(XK_minus, XK_minus).virtualKey(), 0xbd);
}

void tst_CapturedKey::twoKeysOfOneCodeAreToldApart()
{
    // Where plus needs Shift or has the key, it is one code with equal; some layouts have a key for each.
    KeyboardMap map;
    map.add(XK_plus, {20, true, 0});
    QCOMPARE(key(XK_plus, XK_plus).virtualKey(map), 0xbb);
    map.add(XK_equal, {21, true, 0});
    QCOMPARE(key(XK_equal, XK_equal).virtualKey(map), 0xbb);
    QCOMPARE(key(XK_plus, XK_plus).virtualKey(map), 0x12b);
    // A dead key has its accent's code only while nothing else answers to that.
    map.add(XK_dead_grave, {49, true, 0});
    QCOMPARE(key(XK_dead_grave, XK_dead_grave).virtualKey(map), 0x160);
}

void tst_CapturedKey::lettersOfManyScriptsGetTheirCharacter()
{
    QCOMPARE(key(XK_scaron, XK_scaron).virtualKey(), 0x100 + 0x161);
    QCOMPARE(key(XK_odoubleacute, XK_odoubleacute).virtualKey(), 0x100 + 0x151);
    QCOMPARE(key(0x1000e01, 0x1000e01).virtualKey(), 0x100 + 0xe01); // Thai
    QCOMPARE(key(0x1010c80, 0x1010c80).virtualKey(), 0);             // beyond 16 bits
}

void tst_CapturedKey::anotherScriptsLettersAreThoseOfTheOtherGroup()
{
    CapturedKey captured = key(XK_Cyrillic_ef, XK_Cyrillic_ef);
    captured.otherGroup = XK_q; // a French one
    captured.usSymbol = 'a';
    QCOMPARE(captured.virtualKey(), 81);
}

void tst_CapturedKey::anotherScriptsLettersAreElseThoseOfTheirPlace()
{
    CapturedKey captured = key(XK_Cyrillic_ef, XK_Cyrillic_ef);
    captured.usSymbol = 'a';
    QCOMPARE(captured.virtualKey(), 65);
    captured = key(XK_Cyrillic_ha, XK_Cyrillic_ha);
    captured.usSymbol = '[';
    QCOMPARE(captured.virtualKey(), 0xdb);
}

void tst_CapturedKey::latin1KeysWithoutACodeGetTheirCharacter()
{
    QCOMPARE(key(XK_udiaeresis, XK_udiaeresis).virtualKey(), 0x1fc);
    QCOMPARE(key(XK_apostrophe, XK_numbersign).virtualKey(), 0x123);
    QCOMPARE(key(XK_ssharp, XK_ssharp).virtualKey(), 0x1df);
}

void tst_CapturedKey::deadKeysAreTheirAccent()
{
    QCOMPARE(key(XK_dead_circumflex, XK_dead_circumflex).virtualKey(), 0x15e);
    QCOMPARE(key(XK_dead_acute, XK_dead_acute).virtualKey(), 0x1b4);
    QCOMPARE(key(XK_dead_grave, XK_dead_grave).virtualKey(), 0xc0);
}

void tst_CapturedKey::modifiersHaveNoSideButAltGr()
{
    for (const quint32 shift : {XK_Shift_L, XK_Shift_R}) {
        QCOMPARE(key(shift, shift).virtualKey(), 16);
    }
    for (const quint32 control : {XK_Control_L, XK_Control_R}) {
        QCOMPARE(key(control, control).virtualKey(), 17);
    }
    for (const quint32 alt : {XK_Alt_L, XK_Alt_R, XK_Meta_L}) {
        QCOMPARE(key(alt, alt).virtualKey(), 18);
    }
    QCOMPARE(key(XK_ISO_Level3_Shift, XK_ISO_Level3_Shift).virtualKey(), 165);
    QCOMPARE(key(XK_Super_L, XK_Super_L).virtualKey(), 91);
    QCOMPARE(key(XK_Super_R, XK_Super_R).virtualKey(), 92);
}

void tst_CapturedKey::withoutALayoutTheEventsSymbolCounts()
{
    QCOMPARE(key(XK_a, 0).virtualKey(), 65);
    QCOMPARE(key(XK_Escape, 0).virtualKey(), 27);
}

void tst_CapturedKey::whatIsNoKeyHasNoCode()
{
    QCOMPARE(CapturedKey().virtualKey(), 0);
    QCOMPARE(key(XK_Cyrillic_ef, XK_Cyrillic_ef).virtualKey(), 0);
    QCOMPARE(key(XK_space + 0xfd00, 0).virtualKey(), 0);
}

void tst_CapturedKey::everyCodeOfTheTableIsFoundAgain()
{
    const QMap<int, int> sameKey = {{0x2a, 0x2c}, {0xa0, 0x10},  {0xa1, 0x10}, {0xa2, 0x11},
                                    {0xa3, 0x11}, {0xa4, 0x12},  {0xa5, 0x12}, {0xc1, 0xbf},
                                    {0xc2, 0x6c}, {0x12b, 0xbb}, {0x160, 0xc0}};
    int found = 0;
    // Windows' keys, and Latin characters with their accents.
    for (int code = 0; code < 0x100 + 0x370; ++code) {
        const KeysymTable::Symbols symbols = KeysymTable::symbolsOf(quint16(code));
        if (!symbols.isEmpty()) {
            ++found;
            QCOMPARE(key(symbols.keysym, symbols.keysym).virtualKey(), sameKey.value(code, code));
        }
    }
    QVERIFY(found > 250);
}

QTEST_APPLESS_MAIN(tst_CapturedKey)

#include "tst_CapturedKey.moc"
