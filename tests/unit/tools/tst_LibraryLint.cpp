#include "app/frame/AppFonts.h"
#include "tests/support/main/Main.h"
#include "tools/lint/LibraryLint.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// The library that ships, with one thing made wrong each time.
class tst_LibraryLint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void whatIsWrongIsSaid_data();
    void whatIsWrongIsSaid();
    void fileThatIsMissingIsSaid();

private:
    QByteArray m_library;
    QTemporaryDir m_directory;
};

void tst_LibraryLint::initTestCase()
{
    AppFonts::load();
    QFile file(QStringLiteral(LIBRARY));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_library = file.readAll();
    QCOMPARE(LibraryLint::faults(QStringLiteral(LIBRARY)), QStringList());
}

void tst_LibraryLint::whatIsWrongIsSaid_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("fault"); // how the one line that is expected begins
    const QByteArray button =
        R"(<BUTTON id="%1"><NORMAL label="One"><KEY1 type="int">65</KEY1></NORMAL>)"
        R"(<SHIFT1 label="Two"><KEY1 type="special">circular</KEY1></SHIFT1>)"
        R"(<SHIFT2 label="Three"><KEY1 type="midi" channel="1" cc="7" on_touch="127" after_touch="0"/></SHIFT2>)"
        R"(</BUTTON>)";
    QByteArray buttons;
    for (int id = 0; id < 10; ++id) {
        buttons += QByteArray(button).replace("%1", QByteArray::number(id));
    }
    const QByteArray good = R"(<ZR><MAPPING software="Drawing" default="yes">)" + buttons + "</MAPPING></ZR>";
    const auto row = [&good](const char *name, const char *what, const QByteArray &by, const char *fault) {
        QByteArray document = good;
        const int at = document.indexOf(what);
        QVERIFY2(at >= 0, what);
        document.replace(at, int(qstrlen(what)), by);
        QTest::newRow(name) << document << QString::fromLatin1(fault);
    };
    QTest::newRow("nothing") << good << QString();
    QTest::newRow("empty file") << QByteArray() << QStringLiteral("line 1: unexpected end of file");
    QTest::newRow("page") << QByteArray("<html><body/></html>") << QStringLiteral("its root is not ZR");
    QTest::newRow("no mapping") << QByteArray("<ZR/>") << QStringLiteral("it holds no mapping");
    QTest::newRow("not closed") << good.left(good.size() - 5) << QStringLiteral("line 1: ");
    QTest::newRow("twice") << QByteArray(good).replace("</MAPPING></ZR>",
                                                       "</MAPPING><MAPPING software=\"Drawing\">" + buttons +
                                                           "</MAPPING></ZR>")
                           << QStringLiteral("Drawing: is there twice");
    row("no name", R"("Drawing")", R"("")", "mapping 1: has no name");
    row("no default", R"( default="yes")", "", "0 mappings are marked as the default, not one");
    row("button missing", R"(id="4")", R"(id="14")", "Drawing: lacks button 4");
    row("button of another number", "</MAPPING>", QByteArray(button).replace("%1", "10") + "</MAPPING>",
        "Drawing: has a button \"10\"");
    row("button twice", "</MAPPING>", QByteArray(button).replace("%1", "4") + "</MAPPING>",
        "Drawing: has button 4 twice");
    row("other element", "</MAPPING>", "<NOTE id=\"9\"/></MAPPING>", "Drawing: holds an element NOTE");
    row("layer missing", "SHIFT1 label=\"Two\"><KEY1 type=\"special\">circular</KEY1></SHIFT1>",
        "SHIFT3 label=\"Two\"/>", "Drawing: button 0 lacks SHIFT1");
    row("no label", "label=\"Two\"", "label=\" \"", "Drawing: button 0, SHIFT1 has no label");
    row("bar in a label", "label=\"Two\"", "label=\"T|o\"",
        "Drawing: button 0, SHIFT1 has a bar in its label");
    row("label too long", "label=\"One\"", "label=\"A very long name for one button\"",
        "Drawing: button 0 has labels that do not fit its menu");
    row("label that the menu would just cut", "label=\"One\"", "label=\"Tile to the right\"",
        "Drawing: button 0 has labels that do not fit its menu");
    row("no key", "type=\"int\">65", "type=\"int\">0", "Drawing: button 0, NORMAL has a key that is none");
    row("key that does not exist", "type=\"int\">65", "type=\"int\">999",
        "Drawing: button 0, NORMAL has a key that is none");
    row("special action that does not exist", "circular", "cirkular",
        "Drawing: button 0, SHIFT1 names no special action");
    row("MIDI channel", "channel=\"1\"", "channel=\"17\"",
        "Drawing: button 0, SHIFT2 has a MIDI value out of range");
    row("MIDI value", "on_touch=\"127\"", "on_touch=\"128\"",
        "Drawing: button 0, SHIFT2 has a MIDI value out of range");
    row("shift in one layer only", "circular", "shift 1",
        "Drawing: button 0, SHIFT1 is not the shift button that its other layers are");
}

void tst_LibraryLint::whatIsWrongIsSaid()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, fault);
    QFile file(m_directory.filePath(QStringLiteral("library.xml")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(document);
    file.close();
    const QStringList faults = LibraryLint::faults(file.fileName());
    const bool isGood = QByteArray(QTest::currentDataTag()) == "nothing";
    QCOMPARE(faults.isEmpty(), isGood);
    QVERIFY2(isGood || faults.first().startsWith(fault), qPrintable(faults.join(QLatin1Char('\n'))));
}

void tst_LibraryLint::fileThatIsMissingIsSaid()
{
    QCOMPARE(LibraryLint::faults(m_directory.filePath(QStringLiteral("missing"))),
             QStringList{QStringLiteral("there is no such file")});
}

QTEST_MAIN(tst_LibraryLint)
#include "tst_LibraryLint.moc"
