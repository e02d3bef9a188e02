#include "app/Translations.h"
#include "tests/support/main/Main.h"
#include "tests/unit/translations/TranslationFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace
{

QStringList placeholders(const QString &text)
{
    QStringList found;
    QRegularExpressionMatchIterator it = QRegularExpression(QStringLiteral("%\\d")).globalMatch(text);
    while (it.hasNext()) {
        found << it.next().captured();
    }
    found.sort();
    return found;
}

/// What the program says about itself to a user with this environment.
QString help(const QStringList &environment)
{
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        all.remove(QLatin1String(name));
    }
    for (const QString &each : environment) {
        all.insert(each.section(QLatin1Char('='), 0, 0), each.section(QLatin1Char('='), 1));
    }
    QProcess program;
    program.setProcessEnvironment(all);
    program.start(QStringLiteral(VELTRIX_PROGRAM), {QStringLiteral("--help")});
    program.waitForFinished();
    return QString::fromLocal8Bit(program.readAllStandardOutput());
}

} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepWhatIsFilledIn();
    void followTheUsersLanguages_data();
    void followTheUsersLanguages();
    void areTheSourcesForEnglish();
    void areInForceFromThenOn();
    void picturesWithWordsFollow();
    void leaveTheLogInEnglish();
};

void tst_Translations::keepWhatIsFilledIn()
{
    const QVector<Translation> all = readTranslations(QStringLiteral("de"));
    for (const Translation &each : all) {
        QVERIFY2(!each.text.isEmpty(), qPrintable(each.source));
        QVERIFY2(placeholders(each.text) == placeholders(each.source), qPrintable(each.text));
        QVERIFY2(each.text.endsWith(QLatin1Char(' ')) == each.source.endsWith(QLatin1Char(' ')),
                 qPrintable(each.text));
        QVERIFY2(each.text.count(QLatin1Char('\n')) == each.source.count(QLatin1Char('\n')),
                 qPrintable(each.text));
    }
}

void tst_Translations::followTheUsersLanguages_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<bool>("german");
    const auto row = [](const char *environment, bool german) {
        QTest::newRow(environment) << QString::fromLatin1(environment).split(QLatin1Char(' ')) << german;
    };
    row("LC_ALL=C", false);
    row("LC_ALL=en_GB.UTF-8", false);
    row("LC_ALL=fr_FR.UTF-8", false);
    row("LC_ALL=de_DE.UTF-8", true);
    row("LC_ALL=de_AT.UTF-8", true);
    row("LANG=de_CH.UTF-8", true);
    row("LANG=en_US.UTF-8 LC_MESSAGES=de_DE.UTF-8", true);
    row("LANG=en_US.UTF-8 LANGUAGE=de", true);
    row("LANG=de_DE.UTF-8 LANGUAGE=fr:de", true);
    row("LANG=de_DE.UTF-8 LANGUAGE=en_US:de", false);
}

void tst_Translations::followTheUsersLanguages()
{
    QFETCH(QStringList, environment);
    QFETCH(bool, german);
    const QString text = help(environment);
    QVERIFY2(text.contains(german ? QStringLiteral("Jedes Ereignis protokollieren.")
                                  : QStringLiteral("Log every event.")),
             qPrintable(text));
}

void tst_Translations::areTheSourcesForEnglish()
{
    Translations::install(QLocale(QLocale::English));
    QCOMPARE(QCoreApplication::translate("ZRMainWindow", "Quit"), QStringLiteral("Quit"));
}

void tst_Translations::areInForceFromThenOn()
{
    QLocale::setDefault(QLocale(QLocale::English));
    Translations::install(QLocale(QLocale::German, QLocale::Austria));
    QCOMPARE(QCoreApplication::translate("ZRMainWindow", "Quit"), QStringLiteral("Beenden"));
    QCOMPARE(QCoreApplication::translate("ComboMenu", " \u2193  \u2191 Key"),
             QStringLiteral("Tasten \u2193 \u2191"));
}

void tst_Translations::picturesWithWordsFollow()
{
    QFile shown(QStringLiteral(":/buttons/cancel_0.png"));
    QFile german(QStringLiteral(VELTRIX_TRANSLATIONS "/../resources/buttons/de/cancel_0.png"));
    QVERIFY(shown.open(QIODevice::ReadOnly) && german.open(QIODevice::ReadOnly));
    QVERIFY(shown.readAll() == german.readAll());
}

void tst_Translations::leaveTheLogInEnglish()
{
    // Qt's own translation is installed with the program's, or the first line would fail.
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
    QFile missing(QStringLiteral("/nonexistent/file"));
    QVERIFY(!missing.open(QIODevice::ReadOnly));
    QCOMPARE(missing.errorString(), QStringLiteral("No such file or directory"));
}

QTEST_GUILESS_MAIN(tst_Translations)
#include "tst_Translations.moc"
