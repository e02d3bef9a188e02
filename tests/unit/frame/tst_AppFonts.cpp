#include "app/frame/AppFonts.h"
#include "tests/support/main/Main.h"

#include <QFontDatabase>
#include <QLoggingCategory>
#include <QTest>

namespace
{

QStringList logged;

void collect(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &text)
{
    logged << text;
}

} // namespace

class tst_AppFonts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allFontsOfTheProgramLoadWithoutAWord();
    void onlyTheFirstMissingFontIsLogged();
};

void tst_AppFonts::allFontsOfTheProgramLoadWithoutAWord()
{
    logged.clear();
    const auto previous = qInstallMessageHandler(collect);
    AppFonts::load();
    qInstallMessageHandler(previous);
    QCOMPARE(logged, QStringList());
    QVERIFY(QFontDatabase().families().contains(QStringLiteral("Source Sans Pro")));
}

void tst_AppFonts::onlyTheFirstMissingFontIsLogged()
{
    logged.clear();
    const auto previous = qInstallMessageHandler(collect);
    AppFonts::load(
        {QStringLiteral("None.ttf"), QStringLiteral("Nor this.ttf"), QStringLiteral("EasyPeople.ttf")});
    AppFonts::load({QStringLiteral("None.ttf")});
    qInstallMessageHandler(previous);
    QCOMPARE(logged, QStringList{QStringLiteral("couldn't load font None.ttf")});
}

QTEST_MAIN(tst_AppFonts)
#include "tst_AppFonts.moc"
