#include "engine/InputLedger.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "tests/support/main/Main.h"

#include <QTest>

namespace
{

struct Rig {
    Recorder recorder;
    RecordingInjector injector{recorder};
    RecordingAppearance appearance{recorder};
    InputLedger ledger{injector, appearance};
};

QString taken(Rig &rig)
{
    return rig.recorder.takeLines().join(QLatin1String(", "));
}

} // namespace

class tst_InputLedger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void passesOnEverythingAsItComes();
    void passesOnWhichKeysWillBeWanted();
    void releasesNothingWhenNothingIsHeld();
    void releasesKeysInTheOrderInWhichTheyWentDown();
    void releasesAKeyThatWentDownTwiceOnce();
    void endDragLeavesKeysAlone();
    void endDragReleasesOnlyWhatIsHeld();
    void restoreCountsAsShown();
};

void tst_InputLedger::passesOnEverythingAsItComes()
{
    Rig rig;
    rig.ledger.sendKey(65, false);
    rig.ledger.sendKey(65, true);
    rig.ledger.sendKey(65, true);
    rig.ledger.sendLeftButton(false);
    rig.ledger.setHidden(false);
    rig.ledger.sendLeftButton(true);
    rig.ledger.sendKey(65, false);
    rig.ledger.sendKey(65, false);
    rig.ledger.setHidden(true);
    rig.ledger.setHidden(true);
    QCOMPARE(taken(rig),
             QStringLiteral("key 65 up, key 65 down, key 65 down, left up, show, left down, key 65 up, "
                            "key 65 up, hide, hide"));
}

void tst_InputLedger::passesOnWhichKeysWillBeWanted()
{
    Rig rig;
    rig.ledger.prepareKeys({65, 124});
    QCOMPARE(rig.injector.preparedKeys(), (QVector<quint16>{65, 124}));
}

void tst_InputLedger::releasesNothingWhenNothingIsHeld()
{
    Rig rig;
    rig.ledger.releaseAll();
    rig.ledger.endDrag();
    rig.ledger.sendKey(65, true);
    rig.ledger.sendKey(65, false);
    QVERIFY(!rig.ledger.holdsAnything());
    taken(rig);
    rig.ledger.releaseAll();
    QCOMPARE(taken(rig), QString());
}

void tst_InputLedger::releasesKeysInTheOrderInWhichTheyWentDown()
{
    Rig rig;
    for (quint16 key : {quint16(17), quint16(16), quint16(83)}) {
        rig.ledger.sendKey(key, true);
    }
    rig.ledger.sendLeftButton(true);
    rig.ledger.setHidden(true);
    QVERIFY(rig.ledger.holdsAnything());
    QCOMPARE(rig.ledger.heldKeys(), (QVector<quint16>{17, 16, 83}));
    taken(rig);
    rig.ledger.releaseAll();
    QCOMPARE(taken(rig), QStringLiteral("key 17 up, key 16 up, key 83 up, left up, show"));
    QVERIFY(!rig.ledger.holdsAnything());
    rig.ledger.releaseAll();
    QCOMPARE(taken(rig), QString());
}

void tst_InputLedger::releasesAKeyThatWentDownTwiceOnce()
{
    Rig rig;
    rig.ledger.sendKey(65, true);
    rig.ledger.sendKey(66, true);
    rig.ledger.sendKey(65, true);
    taken(rig);
    rig.ledger.releaseAll();
    QCOMPARE(taken(rig), QStringLiteral("key 65 up, key 66 up"));
}

void tst_InputLedger::endDragLeavesKeysAlone()
{
    Rig rig;
    rig.ledger.sendKey(65, true);
    rig.ledger.sendLeftButton(true);
    rig.ledger.setHidden(true);
    taken(rig);
    rig.ledger.endDrag();
    QCOMPARE(taken(rig), QStringLiteral("left up, show"));
    QVERIFY(rig.ledger.holdsAnything());
}

void tst_InputLedger::endDragReleasesOnlyWhatIsHeld()
{
    Rig rig;
    rig.ledger.setHidden(true);
    taken(rig);
    rig.ledger.endDrag();
    QCOMPARE(taken(rig), QStringLiteral("show"));
    rig.ledger.sendLeftButton(true);
    taken(rig);
    rig.ledger.endDrag();
    QCOMPARE(taken(rig), QStringLiteral("left up"));
}

void tst_InputLedger::restoreCountsAsShown()
{
    Rig rig;
    rig.ledger.setHidden(true);
    rig.ledger.restore();
    QCOMPARE(taken(rig), QStringLiteral("hide, show"));
    QVERIFY(!rig.ledger.holdsAnything());
}

QTEST_GUILESS_MAIN(tst_InputLedger)
#include "tst_InputLedger.moc"
