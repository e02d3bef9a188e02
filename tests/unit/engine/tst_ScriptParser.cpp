#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/support/script/ExpectedStreams.h"
#include "tests/support/script/ScriptParser.h"
#include "tests/support/script/SideBySide.h"

#include <QTest>

using Kind = ScriptStep::Kind;

class tst_ScriptParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryKindOfLine();
    void arrowNamesKeepTheirBlanks();
    void reportsTheFirstMistakeWithItsLine_data();
    void reportsTheFirstMistakeWithItsLine();
    void aMissingFileIsAMistake();
    void sideBySideIsEmptyForEqualLists();
    void sideBySideMarksWhatDiffers();
    void desktopShowsNoEmptyReleasesAndMoves();
};

void tst_ScriptParser::readsEveryKindOfLine()
{
    const ParsedScript parsed =
        parseScript(QStringLiteral("# a comment\n"
                                   "in-process\n"
                                   "assign 3 SHIFT2 keys 17 -1 0x5A # Ctrl+Z\n"
                                   "assign 4 NORMAL midi channel=1 cc=60 on=100 note=1\n"
                                   "assign 5 NORMAL midi_knob knobcc=20 m3fh=1 release=0\n"
                                   "screens 0,0,1920x1080 -1280,5,1280x1024\n"
                                   "at -3 4\n"
                                   "sensitivity 50 70\n"
                                   "\n"
                                   "BP3\n"
                                   "BR3\n"
                                   "KN+\n"
                                   "12\n"
                                   "-3\n"
                                   "wait 250\n"
                                   "unplug\n"
                                   "plug\n"
                                   "raw 42 50310A\n"
                                   "mouse 5 -6\n"
                                   "remap assign 0 SHIFT1 special vertical\n"
                                   "---\n"
                                   "key 17 down\n"
                                   "midi 90 3C 64\n"));
    QCOMPARE(parsed.mistake, QString());
    const Script &script = parsed.script;
    QVERIFY(script.inProcessOnly);

    QCOMPARE(script.setUp.size(), 6);
    QCOMPARE(script.setUp.at(0).line, 3);
    QCOMPARE(script.setUp.at(0).button, 3);
    QCOMPARE(script.setUp.at(0).layer, Layer::Shift2);
    QCOMPARE(script.setUp.at(0).action.key1, 17);
    QCOMPARE(script.setUp.at(0).action.key2, -1);
    QCOMPARE(script.setUp.at(0).action.key3, 90);
    const shortCut &midi = script.setUp.at(1).action;
    QVERIFY(midi.key1 == MIDI_BUTTON_ACTION && midi.channel == 1 && midi.cc == 60 && midi.v_on == 100);
    QVERIFY(midi.note && midi.v_off_enable);
    const shortCut &knob = script.setUp.at(2).action;
    QVERIFY(knob.key1 == MIDI_KNOB_ACTION && knob.knobcc == 20 && knob.m3fh && !knob.v_off_enable);
    QCOMPARE(script.setUp.at(3).screens,
             (QVector<QRect>{QRect(0, 0, 1920, 1080), QRect(-1280, 5, 1280, 1024)}));
    QCOMPARE(script.setUp.at(4).point, QPoint(-3, 4));
    QCOMPARE(script.setUp.at(5).number, 50);
    QCOMPARE(script.setUp.at(5).number2, 70);

    const QVector<Kind> kinds{Kind::Button,    Kind::Button, Kind::KnobType, Kind::KnobCount,
                              Kind::KnobCount, Kind::Wait,   Kind::Unplug,   Kind::Plug,
                              Kind::Raw,       Kind::Mouse,  Kind::Remap};
    QCOMPARE(script.events.size(), kinds.size());
    for (int index = 0; index < kinds.size(); ++index) {
        QCOMPARE(script.events.at(index).kind, kinds.at(index));
    }
    QVERIFY(script.events.at(0).pressing && !script.events.at(1).pressing);
    QCOMPARE(script.events.at(2).type, '+');
    QCOMPARE(script.events.at(4).number, -3);
    QCOMPARE(script.events.at(8).bytes, QByteArray("BP1\n"));
    QCOMPARE(script.events.at(10).action.key2, static_cast<int>(SpecialAction::Vertical));

    QCOMPARE(script.expected, (QStringList{QStringLiteral("key 17 down"), QStringLiteral("midi 90 3C 64")}));
}

void tst_ScriptParser::arrowNamesKeepTheirBlanks()
{
    const ParsedScript parsed =
        parseScript(QStringLiteral("assign 0 NORMAL special  \u2193  \u2191 Key\n"
                                   "assign 1 NORMAL special \u2190 \u2192 Key\n---\n"));
    QCOMPARE(parsed.mistake, QString());
    QCOMPARE(parsed.script.setUp.at(0).action.key2, static_cast<int>(SpecialAction::UpDownKeys));
    QCOMPARE(parsed.script.setUp.at(1).action.key2, static_cast<int>(SpecialAction::LeftRightKeys));
}

void tst_ScriptParser::reportsTheFirstMistakeWithItsLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("mistake");
    const auto row = [](const char *name, const char *text, const char *mistake) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(mistake);
    };
    row("unknown word", "BP1\nhop\n---\n", "line 2: \"hop\" is no event");
    row("button with two digits", "BP10\n---\n", "line 1: \"BP10\" is no event");
    row("knob with two characters", "KNDD\n---\n", "line 1: \"KNDD\" is no event");
    row("no separator", "BP1\n", "line 2: \"---\" is missing");
    row("two separators", "---\n---\n", "line 2: a second \"---\"");
    row("set-up too late", "BP1\nat 1 2\n---\n", "line 2: set-up behind the first event");
    row("unknown layer", "assign 1 SHIFT3 keys 1 2 3\n---\n", "line 1: \"SHIFT3\" is no layer");
    row("two keys", "assign 1 NORMAL keys 1 2\n---\n", "line 1: keys K1 K2 K3");
    row("unknown special action", "assign 1 NORMAL special sideways\n---\n",
        "line 1: \"sideways\" is no special action");
    row("arrows without their blank", "assign 1 NORMAL special \u2193  \u2191 Key\n---\n",
        "line 1: \"\u2193  \u2191 Key\" is no special action");
    row("unknown kind", "assign 1 NORMAL click\n---\n", "line 1: \"click\" is no kind of action");
    row("unknown MIDI field", "assign 1 NORMAL midi volume=1\n---\n",
        "line 1: \"volume=1\" is no MIDI field");
    row("flag that is no flag", "assign 1 NORMAL midi note=2\n---\n", "line 1: \"note=2\" is no MIDI field");
    row("negative wait", "wait -1\n---\n", "line 1: wait MS");
    row("odd number of digits", "raw 425\n---\n", "line 1: raw HEX");
    row("count too large", "2147483648\n---\n", "line 1: a count that is too large");
    row("screen without size", "screens 0,0\n---\n", "line 1: \"0,0\" is no X,Y,WxH");
    row("remap without assign", "remap 1\n---\n", "line 1: remap assign ...");
    row("unknown output", "---\nkey 17 pressed\n", "line 2: \"key 17 pressed\" is no output");
}

void tst_ScriptParser::reportsTheFirstMistakeWithItsLine()
{
    QFETCH(QString, text);
    QFETCH(QString, mistake);
    QCOMPARE(parseScript(text).mistake, mistake);
}

void tst_ScriptParser::aMissingFileIsAMistake()
{
    const ParsedScript parsed = readScript(QStringLiteral("/nowhere/at-all.t"));
    QVERIFY(!parsed.isValid());
    QVERIFY(parsed.mistake.contains(QLatin1String("/nowhere/at-all.t")));
}

void tst_ScriptParser::sideBySideIsEmptyForEqualLists()
{
    const QStringList lines{QStringLiteral("hide"), QStringLiteral("show")};
    QCOMPARE(sideBySide(lines, lines), QString());
    QCOMPARE(sideBySide({}, {}), QString());
}

void tst_ScriptParser::sideBySideMarksWhatDiffers()
{
    const QString text = sideBySide({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("d")},
                                    {QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("d")});
    QStringList rows;
    for (const QString &row : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        rows.append(row.simplified());
    }
    QCOMPARE(rows, (QStringList{QStringLiteral("expected actual"), QStringLiteral("a a"),
                                QStringLiteral("b <"), QStringLiteral("> c"), QStringLiteral("d d")}));
}

void tst_ScriptParser::desktopShowsNoEmptyReleasesAndMoves()
{
    const ParsedScript parsed =
        parseScript(QStringLiteral("---\nkey 65 up\nkey 66 down\nkey 66 up\nkey 66 up\nleft up\n"
                                   "left down\nhide\nmove 1 2\nmove 1 2\nleft up\nshow\n"
                                   "midi 90 01 02\npanel GAME\ngame S\n"));
    QCOMPARE(parsed.mistake, QString());
    QCOMPARE(
        expectedOnDesktop(parsed.script),
        (QStringList{QStringLiteral("key 66 down"), QStringLiteral("key 66 up"), QStringLiteral("left down"),
                     QStringLiteral("move 1 2"), QStringLiteral("left up")}));
    QCOMPARE(expectedMidi(parsed.script), QStringList{QStringLiteral("midi 90 01 02")});
}

QTEST_GUILESS_MAIN(tst_ScriptParser)
#include "tst_ScriptParser.moc"
