#include "net/MapUpdate.h"
#include "tests/platform/net/FileContent.h"
#include "tests/support/http/HttpServer.h"
#include "tests/support/main/Main.h"
#include "tests/support/signing/SigningKey.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class tst_MapUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void queryNamesItsCallAndNothingElse();
    void firstStartFetchesAnyVersion();
    void settingsAreWrittenBeforeTheDownloadEnds();
    void textDecides_data();
    void textDecides();
    void answerThatIsNoObjectUpdatesNothing_data();
    void answerThatIsNoObjectUpdatesNothing();
    void hugeAnswerUpdatesNothing();
    void serviceThatIsNotThereUpdatesNothing();
    void errorStatusIsNotLookedAt();
    void eachCheckAsks();
    void managersGoWithTheirReplies();
    void failedDownloadDoesNotCount();
    void fileThatCannotBeStoredDoesNotCount();
    void downloadThatTheEndCutOffDoesNotCount();
    void failedDownloadLeavesTheLibrary_data();
    void failedDownloadLeavesTheLibrary();
    void libraryThatIsTooLargeIsRefused_data();
    void libraryThatIsTooLargeIsRefused();
    void libraryNeedsTheSignatureOfItsKey_data();
    void libraryNeedsTheSignatureOfItsKey();
    void withAKeyTheLibraryStandsUntilTheNewOneIsWhole();
    void withAKeyTheFirstLibraryNeedsNone();
    void withoutAKeyASignatureIsNotLookedAt();
    void logSaysWhatIsCompared();
    void goneWhileItAsks();

private:
    void build(const QByteArray &signingKey);
    void setAnswer(const QString &version, const QString &url, const QByteArray &signature = {});
    void checkAndWait();
    QStringList files() const { return QDir(m_dir->path()).entryList({QStringLiteral("ZR*")}, QDir::Files); }
    QString local() const { return m_settings->value(QStringLiteral("ZR_VERSION")).toString(); }
    QString library() const { return m_dir->filePath(QStringLiteral("ZR.xml")); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<MapUpdate> m_update;
    std::unique_ptr<QSignalSpy> m_started;
    std::unique_ptr<QSignalSpy> m_finished;
};

void tst_MapUpdate::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<HttpServer>();
    m_server->setAnswer("/library", "<ZR>the new one</ZR>");
    m_settings =
        std::make_unique<QSettings>(m_dir->filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    build({});
    QFile file(library());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<ZR>the old one</ZR>");
}

void tst_MapUpdate::build(const QByteArray &signingKey)
{
    m_update = std::make_unique<MapUpdate>(library(), m_settings.get(), m_server->url("/api/"), signingKey);
    m_started = std::make_unique<QSignalSpy>(m_update.get(), &MapUpdate::updateStarted);
    m_finished = std::make_unique<QSignalSpy>(m_update.get(), &MapUpdate::dowloadFinished);
}

void tst_MapUpdate::setAnswer(const QString &version, const QString &url, const QByteArray &signature)
{
    QJsonObject answer{{QStringLiteral("ZR_VERSION"), version}, {QStringLiteral("ZR_URL"), url}};
    if (!signature.isEmpty()) {
        answer.insert(QStringLiteral("ZR_SIGNATURE"), QString::fromLatin1(signature));
    }
    m_server->setAnswer("/api/", QJsonDocument(answer).toJson());
}

void tst_MapUpdate::checkAndWait()
{
    m_update->check();
    const auto managers =
        m_update->findChildren<QNetworkAccessManager *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(!managers.isEmpty());
    bool answered = false;
    connect(managers.last(), &QNetworkAccessManager::finished, this, [&answered] { answered = true; });
    QTRY_VERIFY(answered);
}

void tst_MapUpdate::queryNamesItsCallAndNothingElse()
{
    checkAndWait();
    QCOMPARE(m_server->requests().size(), 1);
    const HttpRequest &request = m_server->requests().first();
    QCOMPARE(request.method, QByteArray("GET"));
    QCOMPARE(request.target, QByteArray("/api/?call=zrsettingsversion"));
    QVERIFY(request.header("Content-Type").isNull());
    QVERIFY(request.header("Content-Length").isNull());
}

void tst_MapUpdate::firstStartFetchesAnyVersion()
{
    setAnswer(QStringLiteral("0"), m_server->url("/library"));
    checkAndWait();
    QCOMPARE(m_started->size(), 1);
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), true);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the new one</ZR>"));
    QCOMPARE(m_started->size(), 1);
}

void tst_MapUpdate::settingsAreWrittenBeforeTheDownloadEnds()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.stallAt = 10;
    m_server->setAnswer("/library", answer);
    setAnswer(QStringLiteral("1.0"), m_server->url("/library"));
    checkAndWait();
    QCOMPARE(m_finished->size(), 0);
    QCOMPARE(local(), QStringLiteral("1.0"));
    QCOMPARE(m_settings->value(QStringLiteral("ZR_URL")).toString(), m_server->url("/library"));
}

void tst_MapUpdate::textDecides_data()
{
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("fetched");
    QTest::newRow("10.0 is not newer than 2.0") << QStringLiteral("2.0") << QStringLiteral("10.0") << false;
    QTest::newRow("9 is newer than 10") << QStringLiteral("10") << QStringLiteral("9") << true;
    QTest::newRow("case is ignored") << QStringLiteral("abc") << QStringLiteral("ABC") << false;
    QTest::newRow("case is ignored the other way") << QStringLiteral("ABC") << QStringLiteral("abd") << true;
    QTest::newRow("the same") << QStringLiteral("3") << QStringLiteral("3") << false;
    QTest::newRow("longer") << QStringLiteral("3") << QStringLiteral("3.0") << true;
    QTest::newRow("none announced") << QStringLiteral("3") << QString() << false;
    QTest::newRow("none at all") << QString() << QString() << false;
}

void tst_MapUpdate::textDecides()
{
    QFETCH(QString, local);
    QFETCH(QString, server);
    QFETCH(bool, fetched);
    m_settings->setValue(QStringLiteral("ZR_VERSION"), local);
    setAnswer(server, m_server->url("/library"));
    checkAndWait();
    QCOMPARE(m_started->size(), fetched ? 1 : 0);
    QCOMPARE(this->local(), fetched ? server : local);
    QTRY_COMPARE(m_finished->size(), fetched ? 1 : 0);
    QCOMPARE(m_server->requestCount("/library"), fetched ? 1 : 0);
}

void tst_MapUpdate::answerThatIsNoObjectUpdatesNothing_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("page") << QByteArray("<html>Sign in</html>");
    QTest::newRow("cut off") << QByteArray(R"({"ZR_VERSION":"9","ZR_U)");
    QTest::newRow("array") << QByteArray(R"([{"ZR_VERSION":"9"}])");
    QTest::newRow("version is a number") << QByteArray(R"({"ZR_VERSION":9,"ZR_URL":"http://h/"})");
}

void tst_MapUpdate::answerThatIsNoObjectUpdatesNothing()
{
    QFETCH(QByteArray, body);
    m_server->setAnswer("/api/", body);
    checkAndWait();
    QCOMPARE(m_started->size(), 0);
    QVERIFY(!m_settings->contains(QStringLiteral("ZR_VERSION")));
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the old one</ZR>"));
}

void tst_MapUpdate::hugeAnswerUpdatesNothing()
{
    m_server->setAnswer("/api/", R"({"ZR_VERSION":"9","ZR_URL":"http://h/"})" + QByteArray(10'000'000, ' '));
    QTest::ignoreMessage(QtWarningMsg, "The answer of 127.0.0.1 is too long");
    checkAndWait();
    QCOMPARE(m_started->size(), 0);
    QVERIFY(!m_settings->contains(QStringLiteral("ZR_VERSION")));
}

void tst_MapUpdate::serviceThatIsNotThereUpdatesNothing()
{
    m_server.reset();
    checkAndWait();
    QCOMPARE(m_started->size(), 0);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the old one</ZR>"));
}

void tst_MapUpdate::errorStatusIsNotLookedAt()
{
    HttpAnswer answer;
    answer.status = 404;
    answer.body = R"({"ZR_VERSION":"9","ZR_URL":")" + m_server->url("/library").toLatin1() + "\"}";
    m_server->setAnswer("/api/", answer);
    checkAndWait();
    QCOMPARE(m_started->size(), 1);
}

void tst_MapUpdate::eachCheckAsks()
{
    m_update->check();
    m_update->check();
    QTRY_COMPARE(m_server->requestCount("/api/"), 2);
}

void tst_MapUpdate::managersGoWithTheirReplies()
{
    for (int i = 0; i < 5; ++i) {
        checkAndWait();
    }
    QTRY_VERIFY(
        m_update->findChildren<QNetworkAccessManager *>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
}

void tst_MapUpdate::failedDownloadDoesNotCount()
{
    m_settings->setValue(QStringLiteral("ZR_VERSION"), QStringLiteral("4"));
    m_settings->setValue(QStringLiteral("ZR_URL"), QStringLiteral("http://h/four"));
    setAnswer(QStringLiteral("5"), m_server->url("/missing"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("server replied")));
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QCOMPARE(local(), QStringLiteral("4"));
    QCOMPARE(m_settings->value(QStringLiteral("ZR_URL")).toString(), QStringLiteral("http://h/four"));

    setAnswer(QStringLiteral("5"), m_server->url("/library"));
    checkAndWait();
    QCOMPARE(m_started->size(), 2);
    QTRY_COMPARE(m_finished->size(), 2);
    QCOMPARE(m_finished->last().first().toBool(), true);
    QCOMPARE(local(), QStringLiteral("5"));
}

void tst_MapUpdate::fileThatCannotBeStoredDoesNotCount()
{
    QVERIFY(QFile::remove(library()));
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("ZR.xml"))); // nothing takes the place of a folder
    setAnswer(QStringLiteral("5"), m_server->url("/library"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot take the place of")));
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QCOMPARE(local(), QString());
}

void tst_MapUpdate::downloadThatTheEndCutOffDoesNotCount()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.stallAt = 600;
    m_server->setAnswer("/library", answer);
    setAnswer(QStringLiteral("5"), m_server->url("/library"));
    checkAndWait();
    QTRY_COMPARE(contentOf(library() + QStringLiteral(".download")).size(), 600);
    QCOMPARE(local(), QStringLiteral("5"));
    build({}); // the next start
    QCOMPARE(local(), QString());
    QCOMPARE(files(), QStringList{QStringLiteral("ZR.xml")});
}

void tst_MapUpdate::failedDownloadLeavesTheLibrary_data()
{
    QTest::addColumn<bool>("stalls");
    QTest::newRow("cut off") << false;
    QTest::newRow("stalls") << true;
}

void tst_MapUpdate::failedDownloadLeavesTheLibrary()
{
    QFETCH(bool, stalls);
    HttpAnswer answer;
    answer.generatedSize = 1000;
    (stalls ? answer.stallAt : answer.breakOffAt) = 600;
    m_server->setAnswer("/library", answer);
    setAnswer(QStringLiteral("5"), m_server->url("/library"));
    m_update->setStallTimeout(200);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("closed|canceled")));
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the old one</ZR>"));
    QCOMPARE(files(), QStringList{QStringLiteral("ZR.xml")});
}

void tst_MapUpdate::libraryThatIsTooLargeIsRefused_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("fits");
    for (const bool fits : {true, false}) {
        const QByteArray size = fits ? "4 MiB" : "a byte more";
        QTest::newRow(size + ", length given") << int(HttpAnswer::Length::Given) << fits;
        QTest::newRow(size + ", chunked") << int(HttpAnswer::Length::Chunked) << fits;
        QTest::newRow(size + ", ends with the connection") << int(HttpAnswer::Length::Unknown) << fits;
    }
}

void tst_MapUpdate::libraryThatIsTooLargeIsRefused()
{
    QFETCH(int, length);
    QFETCH(bool, fits);
    constexpr qint64 largest = 4LL * 1024 * 1024;
    HttpAnswer answer;
    answer.generatedSize = fits ? largest : largest + 1;
    answer.length = HttpAnswer::Length(length);
    m_server->setAnswer("/library", answer);
    setAnswer(QStringLiteral("5"), m_server->url("/library"));
    if (!fits) {
        QTest::ignoreMessage(QtWarningMsg, "The file is larger than 4194304 bytes");
    }
    checkAndWait();
    QTRY_COMPARE_WITH_TIMEOUT(m_finished->size(), 1, 20000);
    QCOMPARE(m_finished->first().first().toBool(), fits);
    QCOMPARE(QFileInfo(library()).size(), fits ? largest : qint64(20));
    QCOMPARE(local(), fits ? QStringLiteral("5") : QString());
}

void tst_MapUpdate::libraryNeedsTheSignatureOfItsKey_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QString>("fault");
    const QByteArray library = "<ZR>the new one</ZR>";
    const QString wrong = QStringLiteral("its signature does not verify");
    QTest::newRow("genuine") << SigningKey().signFile("library", "5", library) << QString();
    QTest::newRow("none") << QByteArray() << QStringLiteral("it is not signed");
    QTest::newRow("garbage") << QByteArray("AAAA") << QStringLiteral("its signature is not one");
    QTest::newRow("another key's") << SigningKey(2).signFile("library", "5", library) << wrong;
    QTest::newRow("of an older version") << SigningKey().signFile("library", "4", library) << wrong;
    QTest::newRow("an installer's") << SigningKey().signFile("installer", "5", library) << wrong;
    QTest::newRow("of another library")
        << SigningKey().signFile("library", "5", "<ZR>the old one</ZR>") << wrong;
}

void tst_MapUpdate::libraryNeedsTheSignatureOfItsKey()
{
    QFETCH(QByteArray, signature);
    QFETCH(QString, fault);
    build(SigningKey().publicKey());
    setAnswer(QStringLiteral("5"), m_server->url("/library"), signature);
    if (!fault.isEmpty()) {
        const QString line = QStringLiteral("The library that was downloaded is not used and is deleted: ");
        QTest::ignoreMessage(QtWarningMsg, qPrintable(line + fault));
    }
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), fault.isEmpty());
    QCOMPARE(contentOf(library()),
             fault.isEmpty() ? QByteArray("<ZR>the new one</ZR>") : QByteArray("<ZR>the old one</ZR>"));
    QCOMPARE(files(), QStringList{QStringLiteral("ZR.xml")});
    QCOMPARE(local(), fault.isEmpty() ? QStringLiteral("5") : QString());
}

void tst_MapUpdate::withAKeyTheLibraryStandsUntilTheNewOneIsWhole()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.stallAt = 600;
    m_server->setAnswer("/library", answer);
    setAnswer(QStringLiteral("5"), m_server->url("/library"),
              SigningKey().signFile("library", "5", HttpServer::generated(0, 1000)));
    build(SigningKey().publicKey());
    m_update->setStallTimeout(300);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("closed|canceled")));
    checkAndWait();
    QTRY_COMPARE(contentOf(library() + QStringLiteral(".download")).size(), 600);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the old one</ZR>"));
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the old one</ZR>"));
    QCOMPARE(files(), QStringList{QStringLiteral("ZR.xml")});
}

void tst_MapUpdate::withAKeyTheFirstLibraryNeedsNone()
{
    QVERIFY(QFile::remove(library()));
    build(SigningKey().publicKey());
    setAnswer(QStringLiteral("5"), m_server->url("/library"),
              SigningKey().signFile("library", "5", "<ZR>the new one</ZR>"));
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the new one</ZR>"));
}

void tst_MapUpdate::withoutAKeyASignatureIsNotLookedAt()
{
    setAnswer(QStringLiteral("5"), m_server->url("/library"), "nonsense");
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), true);
    QCOMPARE(contentOf(library()), QByteArray("<ZR>the new one</ZR>"));
}

void tst_MapUpdate::logSaysWhatIsCompared()
{
    m_settings->setValue(QStringLiteral("ZR_VERSION"), QStringLiteral("1"));
    setAnswer(QStringLiteral("2"), m_server->url("/library"));
    QTest::ignoreMessage(QtInfoMsg, "Checking server for updates...");
    QTest::ignoreMessage(QtInfoMsg, "local settings ver:1 server ver:2");
    QTest::ignoreMessage(QtInfoMsg,
                         qPrintable(QStringLiteral("Update requiered 2 ") + m_server->url("/library")));
    QTest::ignoreMessage(QtInfoMsg, "file downloaded successfully");
    checkAndWait();
    QTRY_COMPARE(m_finished->size(), 1);
}

void tst_MapUpdate::goneWhileItAsks()
{
    HttpAnswer answer;
    answer.silent = true;
    m_server->setAnswer("/api/", answer);
    m_update->check();
    QTRY_COMPARE(m_server->requestCount("/api/"), 1);
    m_update.reset();
    QTest::qWait(20);
    QCOMPARE(m_started->size(), 0);
}

QTEST_GUILESS_MAIN(tst_MapUpdate)
#include "tst_MapUpdate.moc"
