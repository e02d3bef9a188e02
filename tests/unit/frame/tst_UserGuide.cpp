#include "app/frame/AppInfo.h"
#include "app/frame/UserGuide.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class tst_UserGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standsBesideTheProgram_data();
    void standsBesideTheProgram();
#ifdef Q_OS_UNIX
    void isFoundThroughTheLinkOfThePackage();
#endif
    void eachPageIsInTheUsersLanguageIfItIsThereInThat();
    void isOnTheWebWhenNoneIsThere();
    void helpIsTheChapterOnTroubleWhileTheMakerHasNoAddress();

private:
    // Makes a guide's first page in a folder.
    static void make(const QString &folder, const QString &name = QStringLiteral("index.html"));
};

void tst_UserGuide::make(const QString &folder, const QString &name)
{
    QVERIFY(QDir().mkpath(folder));
    QFile page(folder + QLatin1Char('/') + name);
    QVERIFY(page.open(QIODevice::WriteOnly));
}

void tst_UserGuide::standsBesideTheProgram_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("plain") << QStringLiteral("Veltrix");
    QTest::newRow("below odd names") << QStringLiteral("a b/100% & #1");
}

void tst_UserGuide::standsBesideTheProgram()
{
    QFETCH(QString, program);
    const QTemporaryDir prefix;
    const QString guide = prefix.filePath(program) + QStringLiteral("/user-guide");
    make(guide);
    QCOMPARE(UserGuide::address(prefix.filePath(program)),
             QUrl::fromLocalFile(guide + QStringLiteral("/index.html")));
}

void tst_UserGuide::eachPageIsInTheUsersLanguageIfItIsThereInThat()
{
    const QTemporaryDir program;
    const QString guide = program.filePath(QStringLiteral("user-guide"));
    make(guide);
    make(guide, QStringLiteral("troubleshooting.html"));
    make(guide + QStringLiteral("/de"));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Austria));
    const QUrl first = UserGuide::address(program.path());
    const QUrl trouble = UserGuide::troubleshooting(program.path(), {});
    QLocale::setDefault(QLocale(QLocale::French));
    const QUrl other = UserGuide::address(program.path());
    QLocale::setDefault(before);
    QCOMPARE(first, QUrl::fromLocalFile(guide + QStringLiteral("/de/index.html")));
    QCOMPARE(trouble, QUrl::fromLocalFile(guide + QStringLiteral("/troubleshooting.html")));
    QCOMPARE(other, QUrl::fromLocalFile(guide + QStringLiteral("/index.html")));
}

#ifdef Q_OS_UNIX // the package for Windows has no links
void tst_UserGuide::isFoundThroughTheLinkOfThePackage()
{
    const QTemporaryDir prefix;
    make(prefix.filePath(QStringLiteral("share/doc/veltrix/user-guide")));
    const QString program = prefix.filePath(QStringLiteral("lib/veltrix"));
    QVERIFY(QDir().mkpath(program));
    QVERIFY(QFile::link(QStringLiteral("../../share/doc/veltrix/user-guide"),
                        program + QStringLiteral("/user-guide")));
    QCOMPARE(UserGuide::address(program),
             QUrl::fromLocalFile(program + QStringLiteral("/user-guide/index.html")));
}
#endif

void tst_UserGuide::isOnTheWebWhenNoneIsThere()
{
    const QTemporaryDir prefix;
    QVERIFY(QDir().mkpath(prefix.filePath(QStringLiteral("user-guide/index.html")))); // a folder, no page
    QCOMPARE(UserGuide::address(prefix.path()), QUrl(QLatin1String(AppInfo::userGuidePage)));
}

void tst_UserGuide::helpIsTheChapterOnTroubleWhileTheMakerHasNoAddress()
{
    QVERIFY(QUrl(QLatin1String(AppInfo::supportPage)).host().endsWith(QLatin1String(".invalid")));
    const QTemporaryDir prefix;
    QCOMPARE(UserGuide::help(prefix.path()), QUrl(QLatin1String(AppInfo::supportPage)));
    QCOMPARE(UserGuide::troubleshooting(prefix.path(), QStringLiteral("wayland")),
             QUrl(QLatin1String(AppInfo::supportPage)));
    make(prefix.filePath(QStringLiteral("user-guide")), QStringLiteral("troubleshooting.html"));
    QUrl chapter = QUrl::fromLocalFile(prefix.filePath(QStringLiteral("user-guide/troubleshooting.html")));
    QCOMPARE(UserGuide::help(prefix.path()), chapter);
    chapter.setFragment(QStringLiteral("wayland"));
    QCOMPARE(UserGuide::troubleshooting(prefix.path(), QStringLiteral("wayland")), chapter);
}

QTEST_GUILESS_MAIN(tst_UserGuide)
#include "tst_UserGuide.moc"
