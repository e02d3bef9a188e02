#include "tests/support/main/Main.h"
#include "tools/simulator/ScriptParser.h"

#include <QTest>

using simulator::Script;
using simulator::ScriptStep;

class tst_SimulatorScriptParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyEventIsRead();
    void blanksCommentsAndWindowsLineEndsArePassedOver();
    void mistakesAreFound_data();
    void mistakesAreFound();
    void everyMistakeIsToldWithItsLine();
    void anEmptyScriptHasNoSteps();
};

void tst_SimulatorScriptParser::everyEventIsRead()
{
    const Script script =
        simulator::scriptparser::parse("BP3\nBR9\nKND\nKN+\n12\n-3\nwait 250\nplug\nunplug\nraw 42 50 0a\n");
    QVERIFY(script.mistakes.isEmpty());
    QCOMPARE(script.steps.size(), 10);
    QVERIFY(script.steps[0].kind == ScriptStep::Kind::Button && script.steps[0].down);
    QCOMPARE(script.steps[0].number, 3);
    QVERIFY(script.steps[1].kind == ScriptStep::Kind::Button && !script.steps[1].down);
    QCOMPARE(script.steps[1].number, 9);
    QVERIFY(script.steps[2].kind == ScriptStep::Kind::Knob);
    QCOMPARE(script.steps[2].type, 'D');
    QCOMPARE(script.steps[3].type, '+');
    QVERIFY(script.steps[4].kind == ScriptStep::Kind::Count);
    QCOMPARE(script.steps[4].number, 12);
    QCOMPARE(script.steps[5].number, -3);
    QVERIFY(script.steps[6].kind == ScriptStep::Kind::Wait);
    QCOMPARE(script.steps[6].number, 250);
    QVERIFY(script.steps[7].kind == ScriptStep::Kind::Plug);
    QVERIFY(script.steps[8].kind == ScriptStep::Kind::Unplug);
    QVERIFY(script.steps[9].kind == ScriptStep::Kind::Raw);
    QCOMPARE(script.steps[9].bytes, QByteArray("BP\n"));
}

void tst_SimulatorScriptParser::blanksCommentsAndWindowsLineEndsArePassedOver()
{
    const Script script =
        simulator::scriptparser::parse("# a comment\r\n\r\n  BP3   # behind an event\r\n\t\r\nwait   5\r\n");
    QVERIFY(script.mistakes.isEmpty());
    QCOMPARE(script.steps.size(), 2);
    QCOMPARE(script.steps[0].source, QByteArray("BP3"));
    QCOMPARE(script.steps[1].number, 5);
}

void tst_SimulatorScriptParser::mistakesAreFound_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line :
         {"BP", "BPx", "BP10", "bp3", "KN", "KNDD", "wait", "wait x", "wait -1", "wait 99999999", "raw",
          "raw 4", "raw 4g", "plug in", "1.5", "99999999999", "press 3", "BP3 BR3"}) {
        QTest::newRow(line) << QByteArray(line);
    }
}

void tst_SimulatorScriptParser::mistakesAreFound()
{
    QFETCH(QByteArray, line);
    const Script script = simulator::scriptparser::parse(line);
    QCOMPARE(script.steps.size(), 0);
    QCOMPARE(script.mistakes.size(), 1);
    QVERIFY(!script.mistakes.first().message.isEmpty());
}

void tst_SimulatorScriptParser::everyMistakeIsToldWithItsLine()
{
    const Script script = simulator::scriptparser::parse("BP1\n\nBQ1\nBR1\nwait soon");
    QCOMPARE(script.mistakes.size(), 2);
    QCOMPARE(script.mistakes[0].line, 3);
    QCOMPARE(script.mistakes[1].line, 5);
}

void tst_SimulatorScriptParser::anEmptyScriptHasNoSteps()
{
    QVERIFY(simulator::scriptparser::parse("").steps.isEmpty());
    QVERIFY(simulator::scriptparser::parse("\n\n#\n").mistakes.isEmpty());
}

QTEST_APPLESS_MAIN(tst_SimulatorScriptParser)
#include "tst_SimulatorScriptParser.moc"
