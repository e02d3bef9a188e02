#include "tests/support/main/Main.h"
#include "tools/simulator/WireEncoder.h"

#include <QTest>

class tst_WireEncoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aButtonReportIsSixBytes();
    void everyButtonHasItsDigit();
    void aKnobReportCarriesItsCharacter();
    void aCountIsDecimalWithItsSign();
};

void tst_WireEncoder::aButtonReportIsSixBytes()
{
    QCOMPARE(simulator::wire::button(3, true).toHex(), QByteArray("4250330a0d0a"));
    QCOMPARE(simulator::wire::button(3, false).toHex(), QByteArray("4252330a0d0a"));
}

void tst_WireEncoder::everyButtonHasItsDigit()
{
    for (int button = 0; button <= 9; ++button) {
        QCOMPARE(simulator::wire::button(button, true), "BP" + QByteArray::number(button) + "\n\r\n");
    }
}

void tst_WireEncoder::aKnobReportCarriesItsCharacter()
{
    QCOMPARE(simulator::wire::knob('D'), QByteArray("KND\n\r\n"));
    QCOMPARE(simulator::wire::knob('\xff').toHex(), QByteArray("4b4eff0a0d0a"));
    QCOMPARE(simulator::wire::knob('\0').toHex(), QByteArray("4b4e000a0d0a"));
}

void tst_WireEncoder::aCountIsDecimalWithItsSign()
{
    QCOMPARE(simulator::wire::count(12), QByteArray("12\n\r\n"));
    QCOMPARE(simulator::wire::count(-3), QByteArray("-3\n\r\n"));
    QCOMPARE(simulator::wire::count(0), QByteArray("0\n\r\n"));
}

QTEST_APPLESS_MAIN(tst_WireEncoder)
#include "tst_WireEncoder.moc"
