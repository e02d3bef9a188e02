#include "app/LogFile.h"
#include "tests/support/main/Main.h"

#include <QTemporaryDir>
#include <QTest>

class tst_LogFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }
    void linesWaitUntilTheyAreFlushed();
    void anUrgentLineTakesTheWaitingOnesAlong();
    void aLotOfLinesIsWrittenWithoutBeingAsked();
    void onlyTheFirstWaitingLineAsksForAFlush();
    void endingWritesTheRest();
    void appendsToWhatIsThere();
    void aFullFileMovesAsideAndThreeAreKept();
    void aPlaceThatCannotBeWrittenIsDoneWithout();

private:
    QString path() const { return m_directory->filePath(QStringLiteral("log")); }
    QByteArray content(const QString &suffix = {}) const
    {
        QFile file(path() + suffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_LogFile::linesWaitUntilTheyAreFlushed()
{
    LogFile log(path());
    log.append("one", false);
    QCOMPARE(content(), QByteArray());
    log.flush();
    QCOMPARE(content(), QByteArray("one\n"));
}

void tst_LogFile::anUrgentLineTakesTheWaitingOnesAlong()
{
    LogFile log(path());
    log.append("one", false);
    log.append("two", true);
    QCOMPARE(content(), QByteArray("one\ntwo\n"));
}

void tst_LogFile::aLotOfLinesIsWrittenWithoutBeingAsked()
{
    LogFile log(path());
    const QByteArray line(1023, 'x');
    for (int count = 0; count < LogFile::gatherLimit / 1024; ++count) {
        log.append(line, false);
    }
    QCOMPARE(content().size(), LogFile::gatherLimit);
}

void tst_LogFile::onlyTheFirstWaitingLineAsksForAFlush()
{
    LogFile log(path());
    QVERIFY(log.append("one", false));
    QVERIFY(!log.append("two", false));
    log.flush();
    QVERIFY(log.append("three", false));
    QVERIFY(!log.append("four", true));
}

void tst_LogFile::endingWritesTheRest()
{
    {
        LogFile log(path());
        log.append("one", false);
    }
    QCOMPARE(content(), QByteArray("one\n"));
}

void tst_LogFile::appendsToWhatIsThere()
{
    LogFile(path()).append("one", true);
    LogFile(path()).append("two", true);
    QCOMPARE(content(), QByteArray("one\ntwo\n"));
}

void tst_LogFile::aFullFileMovesAsideAndThreeAreKept()
{
    LogFile log(path());
    const QByteArray line(100 * 1024, 'x');
    for (int count = 0; count < 60; ++count) {
        log.append(QByteArray::number(count) + line, true);
    }
    QVERIFY(!content().isEmpty());
    for (const auto *suffix : {"", ".1", ".2", ".3"}) {
        const qint64 size = content(QLatin1String(suffix)).size();
        QVERIFY2(size > 0 && size <= LogFile::sizeLimit, suffix);
    }
    QVERIFY(!QFile::exists(path() + QStringLiteral(".4")));
    QVERIFY(content().endsWith('\n'));
    QVERIFY(content().contains("59x"));
    QVERIFY(content(QStringLiteral(".1")).contains("49x"));
}

void tst_LogFile::aPlaceThatCannotBeWrittenIsDoneWithout()
{
    LogFile log(m_directory->filePath(QStringLiteral("none/log")));
    QVERIFY(!log.append("one", true));
    log.flush();
}

QTEST_GUILESS_MAIN(tst_LogFile)
#include "tst_LogFile.moc"
