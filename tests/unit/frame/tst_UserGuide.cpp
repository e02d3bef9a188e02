#include "app/AppInfo.h"
#include "app/frame/UserGuide.h"

#include <QDir>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

class tst_UserGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standsWhereThePackagePutsIt_data();
    void standsWhereThePackagePutsIt();
    void theOneBesideTheProgramComesFirst();
    void isOnTheWebWhenNoneIsThere();

private:
    // Returns the address of a guide's first page that is made at @p place below a prefix.
    static QUrl make(const QTemporaryDir &prefix, const QString &place);
};

QUrl tst_UserGuide::make(const QTemporaryDir &prefix, const QString &place)
{
    const QString folder = prefix.filePath(place);
    QFile page(folder + QStringLiteral("/index.html"));
    const bool made = QDir().mkpath(folder) && page.open(QIODevice::WriteOnly);
    return made ? QUrl::fromLocalFile(page.fileName()) : QUrl();
}

void tst_UserGuide::standsWhereThePackagePutsIt_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("guide");
    QTest::newRow("beside the program") << QStringLiteral("Veltrix") << QStringLiteral("Veltrix/user-guide");
    QTest::newRow("in the prefix") << QStringLiteral("bin") << QStringLiteral("share/doc/veltrix/user-guide");
    QTest::newRow("in a folder of its own")
        << QStringLiteral("lib/veltrix") << QStringLiteral("share/doc/veltrix/user-guide");
    QTest::newRow("below odd names") << QStringLiteral("a b/100% & #1")
                                     << QStringLiteral("a b/100% & #1/user-guide");
}

void tst_UserGuide::standsWhereThePackagePutsIt()
{
    QFETCH(QString, program);
    QFETCH(QString, guide);
    const QTemporaryDir prefix;
    QVERIFY(QDir().mkpath(prefix.filePath(program)));
    const QUrl page = make(prefix, guide);
    QVERIFY(page.isValid());
    QCOMPARE(UserGuide::address(prefix.filePath(program)), page);
}

void tst_UserGuide::theOneBesideTheProgramComesFirst()
{
    const QTemporaryDir prefix;
    make(prefix, QStringLiteral("share/doc/veltrix/user-guide"));
    const QUrl beside = make(prefix, QStringLiteral("bin/user-guide"));
    QCOMPARE(UserGuide::address(prefix.filePath(QStringLiteral("bin"))), beside);
}

void tst_UserGuide::isOnTheWebWhenNoneIsThere()
{
    const QTemporaryDir prefix;
    QVERIFY(QDir().mkpath(prefix.filePath(QStringLiteral("user-guide/index.html")))); // a folder, no page
    QCOMPARE(UserGuide::address(prefix.path()), QUrl(QLatin1String(AppInfo::userGuidePage)));
}

QTEST_GUILESS_MAIN(tst_UserGuide)
#include "tst_UserGuide.moc"
