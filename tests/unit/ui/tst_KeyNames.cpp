#include "tests/support/main/Main.h"
#include "ui/KeyNames.h"

#include <QTest>
#include <QTranslator>

class tst_KeyNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCombinationCanBeWrittenShorter();
    void namesAKey_data();
    void namesAKey();
    void joinsNames();
    void noKeysHaveNoText();
    void translatesNamesAndNothingElse();
};

void tst_KeyNames::aCombinationCanBeWrittenShorter()
{
    QCOMPARE(KeyNames::shorter(QStringLiteral("CTRL + ALT + PRTSCN")),
             (QStringList{QStringLiteral("CTRL+ALT+PRTSCN"), QStringLiteral("CT+AL+PRTSCN")}));
    QCOMPARE(KeyNames::shorter(QStringLiteral("Win + +")),
             (QStringList{QStringLiteral("Win++"), QStringLiteral("Wi++")}));
    QCOMPARE(KeyNames::shorter(QStringLiteral("PrtScn")), QStringList());
    QCOMPARE(KeyNames::shorter(QStringLiteral("Rotate +")), QStringList());
}

void tst_KeyNames::namesAKey_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    const auto row = [](int code, const QString &name) { QTest::addRow("%d", code) << code << name; };
    row(17, QStringLiteral("Ctrl"));
    row(91, QStringLiteral("Win"));
    row(92, QStringLiteral("Win"));
    row(18, QStringLiteral("Alt"));
    row(27, QStringLiteral("Esc"));
    row(16, QStringLiteral("⇧"));
    row(20, QStringLiteral("⇪"));
    row(13, QStringLiteral("⏎"));
    row(8, QStringLiteral("⌫"));
    row(32, QStringLiteral("˽"));
    row(9, QStringLiteral("⇥"));
    row(0x1000002, QStringLiteral("⇥"));
    row(37, QStringLiteral("←"));
    row(38, QStringLiteral("↑"));
    row(39, QStringLiteral("→"));
    row(40, QStringLiteral("↓"));
    row(12, QStringLiteral("clr"));
    row(36, QStringLiteral("home"));
    row(35, QStringLiteral("end"));
    row(144, QStringLiteral("NumL"));
    row(33, QStringLiteral("PgUp"));
    row(34, QStringLiteral("PgDn"));
    row(46, QStringLiteral("del"));
    row(45, QStringLiteral("ins"));
    row(44, QStringLiteral("PrtScn"));
    row(19, QStringLiteral("pause"));
    row(106, QStringLiteral("*"));
    row(107, QStringLiteral("+"));
    row(187, QStringLiteral("+"));
    row(109, QStringLiteral("-"));
    row(189, QStringLiteral("-"));
    row(110, QStringLiteral("."));
    row(190, QStringLiteral("."));
    row(111, QStringLiteral("/"));
    row(191, QStringLiteral("/"));
    row(192, QStringLiteral("~"));
    row(219, QStringLiteral("["));
    row(221, QStringLiteral("]"));
    row(220, QStringLiteral("\\"));
    row(186, QStringLiteral(";"));
    row(222, QStringLiteral("'"));
    row(188, QStringLiteral(","));
    for (int i = 0; i < 10; ++i) {
        row(96 + i, QStringLiteral("Num%1").arg(i));
        row('0' + i, QString::number(i));
    }
    for (int i = 1; i <= 12; ++i) {
        row(111 + i, QStringLiteral("F%1").arg(i));
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        row(letter, QString(QLatin1Char(letter)));
    }
    // The rest are the character of the low byte, whatever that is.
    row(124, QStringLiteral("|"));              // F13
    row(108, QStringLiteral("l"));              // the keypad's separator
    row(165, QStringLiteral("¥"));              // AltGr
    row(0x1fc, QStringLiteral("ü"));            // a key of its own on a German keyboard
    row(0x261, QStringLiteral("š"));            // beyond Latin-1
    row(0x409, QStringLiteral("\u25cc\u0309")); // a mark, on a Vietnamese keyboard
    row(0x1000000, QString(QChar(0)));          // the toolkit's code of Esc
    row(-1, QString(QChar(0xff)));
}

void tst_KeyNames::namesAKey()
{
    QFETCH(int, code);
    QTEST(KeyNames::name(code), "name");
}

void tst_KeyNames::joinsNames()
{
    QCOMPARE(KeyNames::text({17, 83}), QStringLiteral("Ctrl + S"));
    QCOMPARE(KeyNames::text({17, 16, 18, 65}), QStringLiteral("Ctrl + ⇧ + Alt + A"));
    QCOMPARE(KeyNames::text({91}), QStringLiteral("Win"));
}

void tst_KeyNames::noKeysHaveNoText()
{
    QCOMPARE(KeyNames::text({}), QString());
}

void tst_KeyNames::translatesNamesAndNothingElse()
{
    class Capitals : public QTranslator
    {
    public:
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            return qstrcmp(context, "KeyNames") == 0 ? QString::fromUtf8(source).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } capitals;
    QVERIFY(QCoreApplication::installTranslator(&capitals));
    QCOMPARE(KeyNames::translated(QStringLiteral("Ctrl + home + s")), QStringLiteral("CTRL + HOME + s"));
    QCOMPARE(KeyNames::translated(QStringLiteral("⇧ + + + end")), QStringLiteral("⇧ + + + END"));
    QCOMPARE(KeyNames::translated(QStringLiteral("Go home")), QStringLiteral("Go home"));
    QCOMPARE(KeyNames::translated(QString()), QString());
    QCOMPARE(KeyNames::text({17, 36}), QStringLiteral("Ctrl + home"));
}

QTEST_GUILESS_MAIN(tst_KeyNames)

#include "tst_KeyNames.moc"
