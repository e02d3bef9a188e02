#include "engine/KeySynthesis.h"
#include "engine/KnobPointer.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/recording/RecordingPointer.h"
#include "tests/support/main/Main.h"
#include "tests/support/script/ManualClock.h"

#include <QTest>

#include <chrono>
#include <limits>

namespace
{

constexpr int smallest = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();

struct Rig {
    Recorder recorder;
    RecordingInjector injector{recorder};
    RecordingPointer pointer{recorder};
    RecordingAppearance appearance{recorder};
    KeySynthesis keys{injector};
    ManualClock clock;
    KnobPointer knob{keys, pointer, appearance, clock};
};

} // namespace

Q_DECLARE_METATYPE(KnobMode)

class tst_KnobPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepTable_data();
    void stepTable();
    void touchAndLetGoTable_data();
    void touchAndLetGoTable();
    void aStepAtTheEdgeOfTheNumbersStaysThere();
    void theFirstReturnPointIsWhereThePointerIsAtTheStart();
    void manyMouseMovementsWaitOnce();
    void thePauseIsWholeForAMovementBetweenTwoMilliseconds();
    void destroyedWhileWaiting();
};

void tst_KnobPointer::stepTable_data()
{
    QTest::addColumn<KnobMode>("mode");
    QTest::addColumn<char>("direction");
    QTest::addColumn<QString>("output");
    QTest::addColumn<KnobPointer::Turn>("turn");
    const auto row = [](const char *name, KnobMode mode, const char *left, const char *right) {
        QTest::addRow("%s L", name) << mode << 'L' << QString::fromLatin1(left) << KnobPointer::Turn::Left;
        QTest::addRow("%s R", name) << mode << 'R' << QString::fromLatin1(right) << KnobPointer::Turn::Right;
        QTest::addRow("%s S", name) << mode << 'S' << QString() << KnobPointer::Turn::None;
    };
    row("circular", KnobMode::Circular, "move 100 201", "move 100 199");
    row("vertical", KnobMode::Vertical, "move 100 201", "move 100 199");
    row("horizontal", KnobMode::Horizontal, "move 99 200", "move 101 200");
    row("up and down", KnobMode::UpDownKeys, "key 38 down,key 38 up", "key 40 down,key 40 up");
    row("left and right, crossed", KnobMode::LeftRightKeys, "key 39 down,key 39 up", "key 37 down,key 37 up");
    row("midi", KnobMode::Midi, "move 100 201", "move 100 199");
}

void tst_KnobPointer::stepTable()
{
    QFETCH(KnobMode, mode);
    QFETCH(char, direction);
    QFETCH(QString, output);
    QFETCH(KnobPointer::Turn, turn);
    Rig rig;
    rig.pointer.place(QPoint(100, 200));
    rig.knob.setMode(mode);
    rig.knob.touch();
    rig.recorder.takeLines();
    QVector<KnobPointer::Turn> turns;
    connect(&rig.knob, &KnobPointer::turning, this, [&turns](KnobPointer::Turn t) { turns.append(t); });
    rig.knob.turn(direction);
    QCOMPARE(rig.recorder.takeLines().join(QLatin1Char(',')), output);
    QCOMPARE(turns, QVector<KnobPointer::Turn>{turn});
}

void tst_KnobPointer::touchAndLetGoTable_data()
{
    QTest::addColumn<KnobMode>("mode");
    QTest::addColumn<QString>("touch");
    QTest::addColumn<QString>("letGo");
    const QString down = QStringLiteral("left down,hide");
    const QString up = QStringLiteral("left up,show");
    QTest::newRow("circular") << KnobMode::Circular << down << up + QStringLiteral(",move 100 200");
    QTest::newRow("vertical") << KnobMode::Vertical << down << up;
    QTest::newRow("horizontal") << KnobMode::Horizontal << down << up;
    QTest::newRow("up and down") << KnobMode::UpDownKeys << QString() << QString();
    QTest::newRow("left and right") << KnobMode::LeftRightKeys << QString() << QString();
    QTest::newRow("midi") << KnobMode::Midi << down << up;
}

void tst_KnobPointer::touchAndLetGoTable()
{
    QFETCH(KnobMode, mode);
    QFETCH(QString, touch);
    QFETCH(QString, letGo);
    Rig rig;
    rig.pointer.place(QPoint(100, 200));
    rig.knob.setMode(mode);
    rig.knob.touch();
    QCOMPARE(rig.recorder.takeLines().join(QLatin1Char(',')), touch);
    rig.pointer.place(QPoint(7, 8));
    rig.knob.letGo();
    QCOMPARE(rig.recorder.takeLines().join(QLatin1Char(',')), letGo);
}

void tst_KnobPointer::aStepAtTheEdgeOfTheNumbersStaysThere()
{
    Rig rig;
    rig.knob.setMode(KnobMode::Horizontal);
    rig.knob.touch();
    rig.pointer.place(QPoint(smallest, 0));
    rig.knob.turn('L');
    QCOMPARE(rig.pointer.position(), QPoint(smallest, 0));
    rig.pointer.place(QPoint(largest, 0));
    rig.knob.turn('R');
    QCOMPARE(rig.pointer.position(), QPoint(largest, 0));
    rig.knob.setMode(KnobMode::Vertical);
    rig.pointer.place(QPoint(0, largest));
    rig.knob.turn('L');
    QCOMPARE(rig.pointer.position(), QPoint(0, largest));
    rig.pointer.place(QPoint(0, smallest));
    rig.knob.turn('R');
    QCOMPARE(rig.pointer.position(), QPoint(0, smallest));
}

void tst_KnobPointer::theFirstReturnPointIsWhereThePointerIsAtTheStart()
{
    Recorder recorder;
    RecordingInjector injector(recorder);
    RecordingPointer pointer(recorder);
    RecordingAppearance appearance(recorder);
    KeySynthesis keys(injector);
    ManualClock clock;
    pointer.place(QPoint(333, 444));
    KnobPointer knob(keys, pointer, appearance, clock);
    pointer.place(QPoint(1, 1));
    knob.letGo();
    QCOMPARE(recorder.takeLines().last(), QStringLiteral("move 333 444"));
}

void tst_KnobPointer::manyMouseMovementsWaitOnce()
{
    Rig rig;
    rig.knob.setMode(KnobMode::Vertical);
    rig.knob.touch();
    for (int movement = 0; movement < 1000; ++movement) {
        rig.knob.userMovesMouse();
        QCOMPARE(rig.clock.pendingCount(), std::size_t(1));
        rig.clock.advance(1);
    }
    rig.recorder.takeLines();
    rig.clock.advance(KnobPointer::mousePause - 2);
    QVERIFY(rig.recorder.lines().isEmpty());
    rig.clock.advance(1);
    QCOMPARE(rig.recorder.takeLines(), (QStringList{QStringLiteral("left down"), QStringLiteral("hide")}));
    QCOMPARE(rig.clock.pendingCount(), std::size_t(0));
}

// The clock of the system waits for whole milliseconds.
void tst_KnobPointer::thePauseIsWholeForAMovementBetweenTwoMilliseconds()
{
    using namespace std::chrono_literals;
    Rig rig;
    rig.knob.setMode(KnobMode::Vertical);
    rig.knob.touch();
    rig.knob.userMovesMouse();
    rig.clock.advance(100900us);
    rig.knob.userMovesMouse();
    rig.recorder.takeLines();
    rig.clock.advance(249999us);
    QVERIFY(rig.recorder.lines().isEmpty());
    rig.clock.advance(1ms);
    QCOMPARE(rig.recorder.takeLines(), (QStringList{QStringLiteral("left down"), QStringLiteral("hide")}));
}

void tst_KnobPointer::destroyedWhileWaiting()
{
    Recorder recorder;
    RecordingInjector injector(recorder);
    RecordingPointer pointer(recorder);
    RecordingAppearance appearance(recorder);
    KeySynthesis keys(injector);
    ManualClock clock;
    {
        KnobPointer knob(keys, pointer, appearance, clock);
        knob.touch();
        knob.letGo();
        knob.userMovesMouse();
    }
    recorder.takeLines();
    clock.advance(2000);
    QVERIFY(recorder.lines().isEmpty());
}

QTEST_GUILESS_MAIN(tst_KnobPointer)
#include "tst_KnobPointer.moc"
