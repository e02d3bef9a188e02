#include "ui/ActionKeys.h"

#include <QtTest>

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
    QCOMPARE(ActionKeys::key(3, 1, QStringLiteral("label")), QStringLiteral("tonAction.Shift1.label"));
    QCOMPARE(ActionKeys::key(0, 0, QStringLiteral("key1")), QStringLiteral("ButtonAction.Normal.key1"));
    QCOMPARE(ActionKeys::key(9, 2, QStringLiteral("m0_127")), QStringLiteral("ion.Shift2.m0_127"));
}

void tst_ActionKeys::whatDoesNotExistHasNoKey()
{
    QCOMPARE(ActionKeys::prefix(-1), QString());
    QCOMPARE(ActionKeys::prefix(10), QString());
    QCOMPARE(ActionKeys::layerPart(3), QString());
    QCOMPARE(ActionKeys::key(10, 0, QStringLiteral("key1")), QString());
    QCOMPARE(ActionKeys::key(0, -1, QStringLiteral("key1")), QString());
}

void tst_ActionKeys::theTouchValuesOfShift2AreReadUnderOtherNames()
{
    for (int layer : {0, 1}) {
        for (Purpose purpose : {Purpose::Reading, Purpose::Writing}) {
            QCOMPARE(ActionKeys::pressValueField(layer, purpose), QStringLiteral("on_touch"));
            QCOMPARE(ActionKeys::releaseValueField(layer, purpose), QStringLiteral("after_touch"));
        }
    }
    QCOMPARE(ActionKeys::pressValueField(2, Purpose::Reading), QStringLiteral("value_on"));
    QCOMPARE(ActionKeys::releaseValueField(2, Purpose::Reading), QStringLiteral("value_off"));
    QCOMPARE(ActionKeys::pressValueField(2, Purpose::Writing), QStringLiteral("on_touch"));
    QCOMPARE(ActionKeys::releaseValueField(2, Purpose::Writing), QStringLiteral("after_touch"));
}

QTEST_GUILESS_MAIN(tst_ActionKeys)
#include "tst_ActionKeys.moc"
