#include "engine/Settings.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#ifdef Q_OS_UNIX
#include "tests/support/disk/FullDisk.h"
#endif

class tst_Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writtenValuesComeBack();
    void aFailedWriteIsToldOnceAndTakenBackByTheFact();
    void aFailureInTheEventLoopIsToldToo();
    void aDiskThatTakesNothingLeavesTheFileAsItWas_data();
    void aDiskThatTakesNothingLeavesTheFileAsItWas();
    void aSectionWithoutANameKeepsNothingFromBeingWritten();
    void olderIsAComparisonOfTexts_data();
    void olderIsAComparisonOfTexts();

private:
    // A file stands where the store's folder would have to be: nobody can write there, root included.
    void block() const
    {
        QFile file(m_folder->filePath(QStringLiteral("store")));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    void unblock() const { QVERIFY(QFile::remove(m_folder->filePath(QStringLiteral("store")))); }
    QString path() const { return m_folder->filePath(QStringLiteral("store/settings.ini")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_Settings::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_Settings::writtenValuesComeBack()
{
    Settings settings(path());
    settings.setValue(QStringLiteral("key"), 5);
    QVERIFY(settings.write());
    QVERIFY(settings.isWritten());
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("key=5"));
}

void tst_Settings::aFailedWriteIsToldOnceAndTakenBackByTheFact()
{
    block();
    Settings settings(path());
    const QSignalSpy changed(&settings, &Settings::writtenChanged);
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("The settings cannot be written: ") + path()));
    settings.setValue(QStringLiteral("key"), 5);
    QVERIFY(!settings.write());
    settings.setValue(QStringLiteral("other"), 6);
    QVERIFY(!settings.write());
    QVERIFY(!settings.isWritten());
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.constFirst().constFirst().toBool(), false);
    QCOMPARE(settings.value(QStringLiteral("key")).toInt(), 5); // goes on with what was chosen

    unblock();
    QVERIFY(settings.write());
    QVERIFY(settings.isWritten());
    QCOMPARE(changed.size(), 2);
    QCOMPARE(changed.constLast().constFirst().toBool(), true);
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QVERIFY2(content.contains("key=5") && content.contains("other=6"), content.constData());
}

void tst_Settings::aFailureInTheEventLoopIsToldToo()
{
    block();
    Settings settings(path());
    const QSignalSpy changed(&settings, &Settings::writtenChanged);
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("The settings cannot be written: ") + path()));
    settings.setValue(QStringLiteral("key"), 5);
    QCOMPARE(changed.size(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 1);
    unblock();
    settings.setValue(QStringLiteral("key"), 6);
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 2);
    QVERIFY(QFile::exists(path()));
}

void tst_Settings::aDiskThatTakesNothingLeavesTheFileAsItWas_data()
{
    QTest::addColumn<bool>("behindALink");
    QTest::newRow("a file") << false;
    QTest::newRow("a link to one") << true;
}

void tst_Settings::aDiskThatTakesNothingLeavesTheFileAsItWas()
{
#ifdef Q_OS_UNIX
    QFETCH(bool, behindALink);
    if (behindALink) {
        QVERIFY(QDir().mkpath(QFileInfo(path()).path()));
        QFile target(m_folder->filePath(QStringLiteral("elsewhere.ini")));
        QVERIFY(target.open(QIODevice::WriteOnly));
        QVERIFY(target.link(path()));
    }
    const auto content = [this] {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const auto settings = std::make_unique<Settings>(path());
    settings->setValue(QStringLiteral("first"), 1);
    settings->setValue(QStringLiteral("second"), 1);
    QVERIFY(settings->write());
    const QByteArray before = content();
    const QSignalSpy changed(settings.get(), &Settings::writtenChanged);
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("The settings cannot be written: ") + path()));
    {
        const FullDisk disk(600); // there is room for the lock
        settings->setValue(QStringLiteral("first"), 2);
        settings->setValue(QStringLiteral("long"), QString(1000, QLatin1Char('x')));
        QCoreApplication::processEvents();
        QCOMPARE(content(), before);
        QVERIFY(!settings->isWritten());
        QCoreApplication::processEvents();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(settings->value(QStringLiteral("first")).toInt(), 2);
        settings->setValue(QStringLiteral("second"), 2);
        QVERIFY(!settings->write());
        QCOMPARE(content(), before);
        settings->setValue(QStringLiteral("first"), 1); // as it is in the file, but chosen
    }
    QCoreApplication::processEvents();
    QVERIFY(settings->isWritten());
    QVERIFY2(content().contains("first=1\n"), content().constData());
    QVERIFY2(content().contains("second=2\n"), content().constData());
    QVERIFY(content().contains(QByteArray(1000, 'x')));
    QCOMPARE(QFileInfo(path()).isSymLink(), behindALink);
    for (const QDir &folder : {QFileInfo(path()).dir(), QDir(m_folder->path())}) {
        QVERIFY(folder.entryList({QStringLiteral("*.veltrix-*")}, QDir::Files).isEmpty());
    }
#else
    QSKIP("The system has no limit for the size of a process's files.");
#endif
}

void tst_Settings::aSectionWithoutANameKeepsNothingFromBeingWritten()
{
#ifdef Q_OS_UNIX
    QFile file(m_folder->filePath(QStringLiteral("store")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[;General]\nZR.ver=1.0\nother=1\n"); // the toolkit takes the name for a comment
    file.close();
    Settings settings(file.fileName());
    settings.setValue(QStringLiteral("ZR.ver"), QStringLiteral("1.10"));
    QVERIFY(settings.write());
    QCOMPARE(QSettings(file.fileName(), QSettings::IniFormat).value(QStringLiteral("ZR.ver")).toString(),
             QStringLiteral("1.10"));
#else
    QSKIP("The settings are in the registry; the toolkit reads such a file in another way.");
#endif
}

void tst_Settings::olderIsAComparisonOfTexts_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("older");
    QTest::newRow("nothing stored") << QString() << true;
    QTest::newRow("older") << QStringLiteral("1.09") << true;
    QTest::newRow("the same") << QStringLiteral("1.10") << false;
    QTest::newRow("newer") << QStringLiteral("1.11") << false;
    QTest::newRow("newer as a text only") << QStringLiteral("1.9") << false;
    QTest::newRow("older as a text only") << QStringLiteral("0010.0") << true;
}

void tst_Settings::olderIsAComparisonOfTexts()
{
    QFETCH(QString, stored);
    QFETCH(bool, older);
    Settings settings(path());
    if (!stored.isEmpty()) {
        settings.setUsedBy(stored);
    }
    QCOMPARE(Settings::isOlder(settings, QStringLiteral("1.10")), older);
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
