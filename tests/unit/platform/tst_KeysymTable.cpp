#include "engine/platform/xkb/KeysymTable.h"
#include "tests/support/main/Main.h"

#include <QMap>
#include <QTest>

class tst_KeysymTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyNamedKeyIsKnown();
    void everyKeyboardKeyOfTheCodePageIsKnown();
    void whatIsNoKeyIsUnknown();
    void noTwoCodesShareASymbolUnlessTheyAreOneKey();
    void lettersAreLowerCaseWithTheirCapitals();
};

void tst_KeysymTable::everyNamedKeyIsKnown()
{
    // The codes that a shortcut's text has names for.
    QVector<int> codes = {17,  91,  92,  18,  27,  16,  20,  13,  8,   32,  9,   37,  38,  39,
                          40,  12,  36,  35,  144, 33,  34,  46,  45,  44,  19,  106, 107, 187,
                          109, 189, 110, 190, 111, 191, 192, 219, 221, 220, 186, 222, 188};
    for (int code = 96; code <= 123; ++code) {
        codes << code;
    }
    for (const int code : qAsConst(codes)) {
        QVERIFY2(!KeysymTable::symbolsOf(quint16(code)).isEmpty(), qPrintable(QString::number(code)));
    }
}

void tst_KeysymTable::everyKeyboardKeyOfTheCodePageIsKnown()
{
    const QVector<QPair<int, int>> ranges = {
        {0x08, 0x09}, {0x0c, 0x0d}, {0x10, 0x15}, {0x1b, 0x1d}, {0x20, 0x39}, {0x41, 0x5a}, {0x5b, 0x5d},
        {0x5f, 0x87}, {0x90, 0x92}, {0xa0, 0xb7}, {0xba, 0xc2}, {0xdb, 0xdf}, {0xe2, 0xe2}, {0xf6, 0xfa}};
    for (const auto &range : ranges) {
        for (int code = range.first; code <= range.second; ++code) {
            QVERIFY2(!KeysymTable::symbolsOf(quint16(code)).isEmpty(), qPrintable(QString::number(code)));
        }
    }
}

void tst_KeysymTable::whatIsNoKeyIsUnknown()
{
    // No key, mouse buttons, unassigned and reserved codes, what lies beyond the low byte.
    for (const int code : {0x00, 0x01, 0x02, 0x04, 0x05, 0x06, 0x07, 0x0a, 0x0b, 0x0e,  0x3a,  0x40,  0x5e,
                           0x88, 0x8f, 0x97, 0x9f, 0xb8, 0xb9, 0xe5, 0xe7, 0xff, 0x100, 0x141, 0xffff}) {
        QVERIFY2(KeysymTable::symbolsOf(quint16(code)).isEmpty(), qPrintable(QString::number(code)));
    }
}

void tst_KeysymTable::noTwoCodesShareASymbolUnlessTheyAreOneKey()
{
    // Shift, Ctrl and Alt without a side are the left ones; print; / and separator stand twice on Brazilian
    // keyboards.
    const QMap<int, int> sameKey = {{0xa0, 0x10}, {0xa2, 0x11}, {0xa4, 0x12},
                                    {0x2c, 0x2a}, {0xc1, 0xbf}, {0xc2, 0x6c}};
    QMap<quint32, int> owner;
    for (int code = 0; code < 256; ++code) {
        const quint32 keysym = KeysymTable::symbolsOf(quint16(code)).keysym;
        if (keysym == 0) {
            continue;
        }
        if (sameKey.contains(code)) {
            QCOMPARE(keysym, KeysymTable::symbolsOf(quint16(sameKey.value(code))).keysym);
            continue;
        }
        QVERIFY2(!owner.contains(keysym),
                 qPrintable(QStringLiteral("%1 and %2").arg(code).arg(owner.value(keysym))));
        owner.insert(keysym, code);
    }
    QVERIFY(owner.size() > 150);
}

void tst_KeysymTable::lettersAreLowerCaseWithTheirCapitals()
{
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const KeysymTable::Symbols symbols = KeysymTable::symbolsOf(quint16(letter));
        QCOMPARE(symbols.keysym, quint32(letter + 32));
        QCOMPARE(symbols.shifted, quint32(letter));
    }
}

QTEST_APPLESS_MAIN(tst_KeysymTable)

#include "tst_KeysymTable.moc"
