#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/recording/RecordingPointer.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_RecordingBackend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsOneLineForEachOutput();
    void aSinkGetsTheLinesAndNoneIsKept();
    void thePointerStandsWhereItWasLastPut();
};

void tst_RecordingBackend::keepsOneLineForEachOutput()
{
    Recorder recorder;
    RecordingInjector injector(recorder);
    RecordingAppearance appearance(recorder);
    RecordingPointer pointer(recorder);
    injector.sendKey(17, true);
    injector.sendKey(17, false);
    injector.sendLeftButton(true);
    injector.sendLeftButton(false);
    appearance.setHidden(true);
    appearance.setHidden(false);
    appearance.restore();
    pointer.moveTo(QPoint(10, -4));
    recorder.recordMidi(QByteArray::fromHex("903c64"));
    recorder.recordPanel(QStringLiteral("GAME"));
    recorder.recordGame('S');
    const QStringList expected{
        QStringLiteral("key 17 down"), QStringLiteral("key 17 up"),  QStringLiteral("left down"),
        QStringLiteral("left up"),     QStringLiteral("hide"),       QStringLiteral("show"),
        QStringLiteral("show"),        QStringLiteral("move 10 -4"), QStringLiteral("midi 90 3C 64"),
        QStringLiteral("panel GAME"),  QStringLiteral("game S")};
    QCOMPARE(recorder.lines(), expected);
    QCOMPARE(recorder.takeLines(), expected);
    QVERIFY(recorder.lines().isEmpty());
}

void tst_RecordingBackend::aSinkGetsTheLinesAndNoneIsKept()
{
    QStringList got;
    Recorder recorder([&got](const QString &line) { got.append(line); });
    RecordingInjector(recorder).sendKey(65, true);
    QCOMPARE(got, QStringList{QStringLiteral("key 65 down")});
    QVERIFY(recorder.lines().isEmpty());
}

void tst_RecordingBackend::thePointerStandsWhereItWasLastPut()
{
    Recorder recorder;
    RecordingPointer pointer(recorder);
    QCOMPARE(pointer.position(), QPoint(0, 0));
    QCOMPARE(pointer.screens().size(), 1);
    pointer.moveTo(QPoint(5, 6));
    QCOMPARE(pointer.position(), QPoint(5, 6));
    pointer.place(QPoint(7, 8));
    QCOMPARE(pointer.position(), QPoint(7, 8));
    QCOMPARE(recorder.lines().size(), 1);
}

QTEST_GUILESS_MAIN(tst_RecordingBackend)
#include "tst_RecordingBackend.moc"
