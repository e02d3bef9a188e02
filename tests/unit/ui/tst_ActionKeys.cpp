#include "tests/support/main/Main.h"
#include "ui/ActionKeys.h"

#include <QTest>

using ActionKeys::Purpose;

class tst_ActionKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePrefixIsClippedByTheControlsNumber();
    void keysAreMadeOfPrefixLayerAndField();
    void whatDoesNotExistHasNoKey();
    void theTouchValuesOfShift2AreReadUnderOtherNames();
};

void tst_ActionKeys::thePrefixIsClippedByTheControlsNumber()
{
    const QStringList expected{QStringLiteral("ButtonAction"), QStringLiteral("uttonAction"),
                               QStringLiteral("ttonAction"),   QStringLiteral("tonAction"),
                               QStringLiteral("onAction"),     QStringLiteral("nAction"),
                               QStringLiteral("Action"),       QStringLiteral("ction"),
                               QStringLiteral("tion"),         QStringLiteral("ion")};
    for (int control = 0; control < 10; ++control) {
        QCOMPARE(ActionKeys::prefix(control), expected.at(control));
    }
}

void tst_ActionKeys::keysAreMadeOfPrefixLayerAndField()
{
    QCOMPARE(ActionKeys::key(3, Layer::Shift1, QStringLiteral("label")),
             QStringLiteral("tonAction.Shift1.label"));
    QCOMPARE(ActionKeys::key(0, Layer::Normal, QStringLiteral("key1")),
             QStringLiteral("ButtonAction.Normal.key1"));
    QCOMPARE(ActionKeys::key(9, Layer::Shift2, QStringLiteral("m0_127")),
             QStringLiteral("ion.Shift2.m0_127"));
}

void tst_ActionKeys::whatDoesNotExistHasNoKey()
{
    QCOMPARE(ActionKeys::prefix(-1), QString());
    QCOMPARE(ActionKeys::prefix(10), QString());
    QCOMPARE(ActionKeys::key(10, Layer::Normal, QStringLiteral("key1")), QString());
}

void tst_ActionKeys::theTouchValuesOfShift2AreReadUnderOtherNames()
{
    for (const Layer layer : {Layer::Normal, Layer::Shift1}) {
        for (Purpose purpose : {Purpose::Reading, Purpose::Writing}) {
            QCOMPARE(ActionKeys::pressValueField(layer, purpose), QStringLiteral("on_touch"));
            QCOMPARE(ActionKeys::releaseValueField(layer, purpose), QStringLiteral("after_touch"));
        }
    }
    QCOMPARE(ActionKeys::pressValueField(Layer::Shift2, Purpose::Reading), QStringLiteral("value_on"));
    QCOMPARE(ActionKeys::releaseValueField(Layer::Shift2, Purpose::Reading), QStringLiteral("value_off"));
    QCOMPARE(ActionKeys::pressValueField(Layer::Shift2, Purpose::Writing), QStringLiteral("on_touch"));
    QCOMPARE(ActionKeys::releaseValueField(Layer::Shift2, Purpose::Writing), QStringLiteral("after_touch"));
}

QTEST_GUILESS_MAIN(tst_ActionKeys)
#include "tst_ActionKeys.moc"
