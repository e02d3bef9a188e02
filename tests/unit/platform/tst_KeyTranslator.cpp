#include "engine/platform/xkb/KeyTranslator.h"
#include "tests/support/main/Main.h"

#include <QTest>

namespace
{

const quint32 a = 0x61;
const quint32 slash = 0x2f;
const quint32 equal = 0x3d;
const quint32 plus = 0x2b;
const quint32 f13 = 0xffca;
const quint32 kpDecimal = 0xffae;
const quint32 kpSeparator = 0xffac;
const quint8 shift = 1;

const quint16 vkA = 'A';
const quint16 vkSlash = 0xbf;
const quint16 vkPlus = 0xbb;
const quint16 vkF13 = 0x7c;
const quint16 vkF14 = 0x7d;
const quint16 vkF15 = 0x7e;
const quint16 vkDecimal = 0x6e;

} // namespace

class tst_KeyTranslator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void directKeyIsPressedAsItIs();
    void directKeyWinsOverAnEarlierOneWithShift();
    void shiftedSymbolGoesToASpareKeycode();
    void alternativeIsTakenWhenItIsDirect();
    void decimalKeyTypesWhatTheLayoutPutsThere();
    void symbolStaysOnItsSpareKeycode();
    void spareKeycodesGoToWantedCodesFirst();
    void missingSymbolsAreServedBeforeTypableOnes();
    void unwantedSymbolGivesWay();
    void wantedSymbolDoesNotGiveWay();
    void heldKeycodeDoesNotGiveWay();
    void makeshiftIsGivenUpWhenRoomIsFound();
    void ownSymbolsInTheNewLayoutAreNotPutThereAgain();
    void unknownCodeHasNoStroke();

private:
    KeyboardMap layout(int spares) const;

    QStringList m_assigned; // "keycode:symbol", the symbol in hexadecimal
    KeyTranslator::Held m_held;
    std::unique_ptr<KeyTranslator> m_translator;
};

void tst_KeyTranslator::init()
{
    m_assigned.clear();
    m_held.reset();
    m_translator = std::make_unique<KeyTranslator>(
        [this](quint8 keycode, quint32 keysym, quint32) {
            m_assigned << QStringLiteral("%1:%2").arg(keycode).arg(keysym, 0, 16);
        },
        m_held);
}

/// A on 38; / with Shift on 16; plus on 20; nothing on 200 and after.
KeyboardMap tst_KeyTranslator::layout(int spares) const
{
    KeyboardMap map;
    map.add(slash, {16, false, shift});
    map.add(plus, {20, true, 0});
    map.add(equal, {19, false, shift});
    map.add(a, {38, true, 0});
    map.setModifierKey(0, 50);
    for (int i = 0; i < spares; ++i) {
        map.addSpare(quint8(200 + i));
    }
    return map;
}

void tst_KeyTranslator::directKeyIsPressedAsItIs()
{
    m_translator->setMap(layout(2));
    QCOMPARE(m_translator->strokeFor(vkA).keycode, quint8(38));
    QCOMPARE(m_translator->strokeFor(vkA).modifiers, quint8(0));
    QVERIFY(m_assigned.isEmpty());
}

void tst_KeyTranslator::directKeyWinsOverAnEarlierOneWithShift()
{
    KeyboardMap map = layout(2);
    map.add(slash, {106, true, 0});
    m_translator->setMap(map);
    QCOMPARE(m_translator->strokeFor(vkSlash).keycode, quint8(106));
}

void tst_KeyTranslator::shiftedSymbolGoesToASpareKeycode()
{
    m_translator->setMap(layout(2));
    QCOMPARE(m_translator->strokeFor(vkSlash).keycode, quint8(200));
    QCOMPARE(m_translator->strokeFor(vkSlash).modifiers, quint8(0));
    QCOMPARE(m_assigned, QStringList{QStringLiteral("200:2f")});
}

void tst_KeyTranslator::alternativeIsTakenWhenItIsDirect()
{
    m_translator->setMap(layout(2));
    QCOMPARE(m_translator->strokeFor(vkPlus).keycode, quint8(20));
    QVERIFY(m_assigned.isEmpty());
}

void tst_KeyTranslator::decimalKeyTypesWhatTheLayoutPutsThere()
{
    KeyboardMap map = layout(2);
    map.add(kpDecimal, {129, true, 0}); // a second point that no keyboard has
    map.add(kpSeparator, {91, false, 16});
    map.setKeypadDecimal(kpSeparator);
    m_translator->setMap(map);
    QCOMPARE(m_translator->strokeFor(vkDecimal).keycode, quint8(200));
    QCOMPARE(m_assigned, QStringList{QStringLiteral("200:ffac")});
}

void tst_KeyTranslator::symbolStaysOnItsSpareKeycode()
{
    m_translator->setMap(layout(2));
    m_translator->want({vkF13});
    m_translator->want({vkF13, vkA});
    QCOMPARE(m_translator->strokeFor(vkF13).keycode, quint8(200));
    QCOMPARE(m_assigned.size(), 1);
}

void tst_KeyTranslator::spareKeycodesGoToWantedCodesFirst()
{
    m_translator->setMap(layout(2));
    m_translator->strokeFor(vkF13);
    m_translator->strokeFor(vkF14);
    m_translator->want({vkF15});
    QCOMPARE(m_assigned.last(), QStringLiteral("200:ffcc")); // in the oldest one's place
    QCOMPARE(m_translator->strokeFor(vkF13).keycode, quint8(201));
}

void tst_KeyTranslator::missingSymbolsAreServedBeforeTypableOnes()
{
    m_translator->setMap(layout(1));
    m_translator->want({vkSlash, vkF13});
    QCOMPARE(m_assigned, QStringList{QStringLiteral("200:ffca")});
    QCOMPARE(m_translator->strokeFor(vkSlash).keycode, quint8(16));
    QCOMPARE(m_translator->strokeFor(vkSlash).modifiers, shift);
}

void tst_KeyTranslator::unwantedSymbolGivesWay()
{
    m_translator->setMap(layout(1));
    m_translator->strokeFor(vkF13);
    QCOMPARE(m_translator->strokeFor(vkF14).keycode, quint8(200));
    QCOMPARE(m_translator->strokeFor(vkF13).keycode, quint8(200));
    QCOMPARE(m_assigned.size(), 3);
}

void tst_KeyTranslator::wantedSymbolDoesNotGiveWay()
{
    m_translator->setMap(layout(1));
    m_translator->want({vkF13});
    QCOMPARE(m_translator->strokeFor(vkF14).keycode, quint8(0));
    QCOMPARE(m_assigned.size(), 1);
}

void tst_KeyTranslator::heldKeycodeDoesNotGiveWay()
{
    m_translator->setMap(layout(1));
    m_translator->strokeFor(vkF13);
    m_held.set(200);
    QCOMPARE(m_translator->strokeFor(vkF14).keycode, quint8(0));
    m_held.reset(200);
    QCOMPARE(m_translator->strokeFor(vkF14).keycode, quint8(200));
}

void tst_KeyTranslator::makeshiftIsGivenUpWhenRoomIsFound()
{
    m_translator->setMap(layout(1));
    m_translator->strokeFor(vkF13);
    m_held.set(200);
    QCOMPARE(m_translator->strokeFor(vkSlash).modifiers, shift);
    m_held.reset(200);
    QCOMPARE(m_translator->strokeFor(vkSlash).keycode, quint8(200));
}

void tst_KeyTranslator::ownSymbolsInTheNewLayoutAreNotPutThereAgain()
{
    m_translator->setMap(layout(2));
    m_translator->want({vkF13});
    KeyboardMap echo = layout(0);
    echo.addSpare(201);
    echo.add(f13, {200, true, 0});
    m_translator->setMap(echo);
    m_translator->setMap(echo);
    QCOMPARE(m_assigned.size(), 1);
    m_translator->setMap(layout(2)); // thrown out
    QCOMPARE(m_assigned.size(), 2);
}

void tst_KeyTranslator::unknownCodeHasNoStroke()
{
    m_translator->setMap(layout(2));
    for (const quint16 code : {quint16(0), quint16(7), quint16(255), quint16(256), quint16(0xffff)}) {
        QCOMPARE(m_translator->strokeFor(code).keycode, quint8(0));
    }
    QVERIFY(m_assigned.isEmpty());
}

QTEST_APPLESS_MAIN(tst_KeyTranslator)

#include "tst_KeyTranslator.moc"
