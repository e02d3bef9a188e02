#include "tests/support/main/Main.h"
#include "tools/simulator/Options.h"

#include <QTest>

using simulator::Options;

class tst_SimulatorOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutOptionsThereIsAWindow();
    void scriptAndInputNeedNoWindow();
    void theWindowCanBeAskedForBesides();
    void theLinkIsTaken();
    void thePortIsTaken();
    void mistakesAreTold_data();
    void mistakesAreTold();
    void theHelpNamesEveryOption();

private:
    static Options parse(const char *line)
    {
        return simulator::parseOptions((QStringLiteral("veltrix-simulator ") + QLatin1String(line))
                                           .split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
};

void tst_SimulatorOptions::withoutOptionsThereIsAWindow()
{
    const Options options = parse("");
    QVERIFY(options.window);
    QVERIFY(!options.readInput && !options.stay && !options.unplugged && !options.help && !options.version);
    QVERIFY(options.error.isEmpty());
}

void tst_SimulatorOptions::scriptAndInputNeedNoWindow()
{
    QCOMPARE(parse("--script a.txt").scriptFile.value(), QStringLiteral("a.txt"));
    QVERIFY(!parse("--script a.txt").window);
    QVERIFY(parse("--stdin").readInput);
    QVERIFY(!parse("--stdin").window);
}

void tst_SimulatorOptions::theWindowCanBeAskedForBesides()
{
    QVERIFY(parse("--script a.txt --window").window);
}

void tst_SimulatorOptions::theLinkIsTaken()
{
    QCOMPARE(parse("--link /x/y").link.value(), QStringLiteral("/x/y"));
}

void tst_SimulatorOptions::thePortIsTaken()
{
    QVERIFY(!parse("").listen);
    QCOMPARE(parse("--listen 5000").listen.value(), quint16(5000));
    QCOMPARE(parse("--listen 0").listen.value(), quint16(0));
    QVERIFY(parse("--listen 5000").window);
}

void tst_SimulatorOptions::mistakesAreTold_data()
{
    QTest::addColumn<QString>("line");
    for (const char *line : {"--scribt x", "--script", "file.txt", "--link=", "--listen x", "--listen 65536",
                             "--listen -1", "--listen 5000 --link /x"}) {
        QTest::newRow(line) << QString::fromLatin1(line);
    }
}

void tst_SimulatorOptions::mistakesAreTold()
{
    QFETCH(QString, line);
    QVERIFY(!parse(line.toLatin1().constData()).error.isEmpty());
}

void tst_SimulatorOptions::theHelpNamesEveryOption()
{
    const QString help = simulator::helpText();
    for (const char *name : {"--script", "--stdin", "--window", "--stay", "--unplugged", "--link", "--listen",
                             "--timestamps", "--help", "--version"}) {
        QVERIFY2(help.contains(QLatin1String(name)), name);
    }
}

QTEST_APPLESS_MAIN(tst_SimulatorOptions)
#include "tst_SimulatorOptions.moc"
