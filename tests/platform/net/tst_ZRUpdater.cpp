#include "tests/platform/net/FileContent.h"
#include "tests/platform/net/UpdaterRig.h"
#include "tests/platform/net/UpdaterTexts.h"
#include "tests/support/main/Main.h"

#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QRegularExpression>
#include <QTest>

class tst_ZRUpdater : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void firstCheckAsSoonAsTheLoopRuns();
    void checksEveryHalfHour();
    void checksAgainAndAgain();
    void managerOfItsOwnGoesWithTheAnswer();
    void requestIsAsTheServiceWantsIt();
    void versionDecides_data();
    void versionDecides();
    void withoutAVersionOfItsOwnNothingIsNewer();
    void answerIsCleaned_data();
    void answerIsCleaned();
    void answerThatIsNoObjectOffersNothing_data();
    void answerThatIsNoObjectOffersNothing();
    void hugeAnswerOffersNothing();
    void answerWithoutAnEndOffersNothing_data();
    void answerWithoutAnEndOffersNothing();
    void errorOnTheCheckIsSilent_data();
    void errorOnTheCheckIsSilent();
    void addressIsTakenFromTheAnswer_data();
    void addressIsTakenFromTheAnswer();
    void unknownPriorityDoesNothing_data();
    void unknownPriorityDoesNothing();
    void answerThatOffersNothingLeavesTheOffer_data();
    void answerThatOffersNothingLeavesTheOffer();
    void laterOfferReplacesTheOneBefore();
    void copyThatIsKeptUpToDateOtherwiseIsOnlyToldOf();
    void lowOffersInTheWindow();
    void midAsks();
    void midIsNotAskedTwice();
    void midDeclinedOffersInTheWindow();
    void highOrders();
    void highReplacesItsQuestion();
    void mandatoryDownloadsInSilenceAndAsksToClose();
    void mandatoryIsForgottenWithTheNextAnswer();
    void promptThatIsGoneIsNotAsked();
    void promptThatOutlivesTheUpdaterDoesNothing();

private:
    QString url() const { return m_rig->server.url("/installer"); }

    std::unique_ptr<UpdaterRig> m_rig;
};

void tst_ZRUpdater::init()
{
    m_rig = std::make_unique<UpdaterRig>();
    m_rig->server.setAnswer("/installer", installerBody);
}

void tst_ZRUpdater::firstCheckAsSoonAsTheLoopRuns()
{
    m_rig->setOffer("1.10", "LOW", url());
    m_rig->updater->arm();
    QCOMPARE(m_rig->alarm.waits, QList<int>{1});
    QCOMPARE(m_rig->server.requests().size(), 0);
    m_rig->alarm.ring();
    QVERIFY(m_rig->waitFor(QStringLiteral("no update")));
    QCOMPARE(m_rig->server.requests().size(), 1);
}

void tst_ZRUpdater::checksEveryHalfHour()
{
    m_rig->setOffer("1.10", "LOW", url());
    m_rig->updater->arm();
    for (int check = 1; check <= 4; ++check) {
        m_rig->alarm.ring();
        QTRY_COMPARE(m_rig->signalsSeen.size(), check);
        QCOMPARE(m_rig->server.requests().size(), check);
        QCOMPARE(m_rig->alarm.waits.last(), 1800000);
        QCOMPARE(m_rig->alarm.waits.size(), check + 1);
    }
}

// With a timer and a manager of its own.
void tst_ZRUpdater::checksAgainAndAgain()
{
    m_rig->setOffer("1.10", "LOW", url());
    ZRUpdater::Setup setup = m_rig->setup();
    setup.network = nullptr;
    setup.alarm = nullptr;
    setup.checkInterval = 30;
    m_rig->build(setup);
    m_rig->updater->arm();
    QTRY_VERIFY(m_rig->server.requests().size() >= 4);
    // Each answer is reported once.
    QTRY_VERIFY(m_rig->signalsSeen.size() >= 4);
    QVERIFY(m_rig->signalsSeen.size() <= m_rig->server.requests().size());
}

void tst_ZRUpdater::managerOfItsOwnGoesWithTheAnswer()
{
    m_rig->setOffer("1.10", "LOW", url());
    ZRUpdater::Setup setup = m_rig->setup();
    setup.network = nullptr;
    m_rig->build(setup);
    m_rig->updater->arm();
    const auto managers = [this] { return m_rig->updater->findChildren<QNetworkAccessManager *>().size(); };
    QCOMPARE(managers(), 0);
    m_rig->alarm.ring();
    QCOMPARE(managers(), 1);
    QVERIFY(m_rig->waitFor(QStringLiteral("no update")));
    QTRY_COMPARE(managers(), 0);
}

void tst_ZRUpdater::requestIsAsTheServiceWantsIt()
{
    m_rig->setOffer("1.10", "LOW", url());
    m_rig->check();
    const HttpRequest &request = m_rig->server.requests().first();
    QCOMPARE(request.method, QByteArray("GET"));
    QCOMPARE(request.target, QByteArray("/api/?call=zrversion"));
    QCOMPARE(request.header("Content-Type"), QByteArray("application/x-www-form-urlencoded"));
    QCOMPARE(request.header("User-Agent"), QByteArray("Mozilla/5.0"));
    QCOMPARE(request.header("Accept-Language"), QByteArray("en-US,en;q=0.5"));
}

void tst_ZRUpdater::versionDecides_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<bool>("offered");
    QTest::newRow("1.9") << QByteArray("1.9") << false;
    QTest::newRow("1.10") << QByteArray("1.10") << false;
    QTest::newRow("1.10.0") << QByteArray("1.10.0") << true;
    QTest::newRow("1.11") << QByteArray("1.11") << true;
    QTest::newRow("2") << QByteArray("2") << true;
    QTest::newRow("1") << QByteArray("1") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("abc") << QByteArray("abc") << false;
}

void tst_ZRUpdater::versionDecides()
{
    QFETCH(QByteArray, version);
    QFETCH(bool, offered);
    m_rig->setOffer(version.constData(), "LOW", url());
    m_rig->check();
    const QString expected =
        offered ? QStringLiteral("available ") + QString::fromLatin1(version) : QStringLiteral("no update");
    QCOMPARE(m_rig->signalsSeen, QStringList{expected});
}

void tst_ZRUpdater::withoutAVersionOfItsOwnNothingIsNewer()
{
    ZRUpdater::Setup setup = m_rig->setup();
    setup.version.clear();
    m_rig->build(setup);
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"no update"}));
}

void tst_ZRUpdater::answerIsCleaned_data()
{
    QTest::addColumn<QByteArray>("body");
    const QByteArray members = R"("UPDATE_VERSION":"1.11","UPDATE_PRIORITY":"LOW","UPDATE_URL":"http://h/")";
    QTest::newRow("plain") << "{" + members + "}";
    QTest::newRow("line ends and tabs between") << "\r\n\t{\r\n" + members + "\t\n}\r\n";
    QTest::newRow("line ends within a text") << QByteArray(
        "{\"UPDATE_VERSION\":\"1.\n11\",\"UPDATE_PRIORITY\":\"L\tO\r\nW\",\"UPDATE_URL\":\"\"}");
    QTest::newRow("what follows a NUL") << "{" + members + "}" + QByteArray("\0<html>", 7);
    QTest::newRow("further members") << "{\"OTHER\":[1,2]," + members + "}";
}

void tst_ZRUpdater::answerIsCleaned()
{
    QFETCH(QByteArray, body);
    m_rig->setAnswer(body);
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"available 1.11"}));
}

void tst_ZRUpdater::answerThatIsNoObjectOffersNothing_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << QByteArray(R"({"UPDATE_VERSION":"9","UPDATE_PRIOR)");
    QTest::newRow("page") << QByteArray("<html><body>Sign in</body></html>");
    QTest::newRow("array") << QByteArray(R"(["9"])");
    QTest::newRow("version is a number") << QByteArray(R"({"UPDATE_VERSION":9,"UPDATE_PRIORITY":"MAN"})");
    QTest::newRow("binary") << QByteArray("\xff\xfe\x00\x01", 4);
    QTest::newRow("deeply nested") << QByteArray(60000, '[');
}

void tst_ZRUpdater::answerThatIsNoObjectOffersNothing()
{
    QFETCH(QByteArray, body);
    m_rig->setAnswer(body);
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"no update"}));
    QVERIFY(m_rig->prompt->questions.isEmpty());
}

void tst_ZRUpdater::hugeAnswerOffersNothing()
{
    const QByteArray offer = R"({"UPDATE_VERSION":"9","UPDATE_PRIORITY":"LOW","UPDATE_URL":"http://h/"})";
    m_rig->setAnswer(offer + QByteArray(10 * 1024 * 1024, ' '));
    QTest::ignoreMessage(QtWarningMsg, "The answer of 127.0.0.1 is too long");
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, QStringList());
}

void tst_ZRUpdater::answerWithoutAnEndOffersNothing_data()
{
    QTest::addColumn<bool>("drips");
    QTest::newRow("stalls before its end") << false;
    QTest::newRow("goes on and on") << true;
}

void tst_ZRUpdater::answerWithoutAnEndOffersNothing()
{
    QFETCH(bool, drips);
    HttpAnswer answer;
    answer.body = R"({"UPDATE_VERSION":"9","UPDATE_PRIORITY":"LOW","UPDATE_URL":"http://h/"})";
    answer.length = HttpAnswer::Length::Chunked;
    answer.stallAt = answer.body.size();
    if (drips) {
        answer.body += QByteArray(100'000, ' ');
        answer.stallAt = -1;
        answer.pieceSize = 80;
        answer.pause = 10;
    }
    m_rig->server.setAnswer("/api/", answer);
    ZRUpdater::Setup setup = m_rig->setup();
    setup.answerDeadline = 200;
    m_rig->build(setup);
    QTest::ignoreMessage(QtWarningMsg, "The answer of 127.0.0.1 does not come to an end");
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"no inet"}));
}

void tst_ZRUpdater::errorOnTheCheckIsSilent_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("not found") << 404;
    QTest::newRow("server error") << 500;
}

void tst_ZRUpdater::errorOnTheCheckIsSilent()
{
    QFETCH(int, status);
    HttpAnswer answer;
    answer.status = status;
    answer.body = R"({"UPDATE_VERSION":"9","UPDATE_PRIORITY":"MAN","UPDATE_URL":"http://h/"})";
    m_rig->server.setAnswer("/api/", answer);
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"no inet"}));
    QVERIFY(m_rig->prompt->questions.isEmpty());
}

void tst_ZRUpdater::addressIsTakenFromTheAnswer_data()
{
    QTest::addColumn<QByteArray>("before"); // what stands around the server's address in the answer
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QByteArray>("slash");
    QTest::addColumn<bool>("secure");
    const QByteArray none;
    QTest::newRow("one") << none << none << QByteArray("/") << false;
    QTest::newRow("several") << none << QByteArray(";http://127.0.0.1:1/other;x") << QByteArray("/") << false;
    QTest::newRow("escaped slashes") << none << none << QByteArray("\\/") << false;
    QTest::newRow("slashes escaped twice") << none << none << QByteArray("\\\\/") << false;
    QTest::newRow("https") << none << none << QByteArray("/") << true;
    QTest::newRow("all of it") << none << QByteArray(";https:\\/\\/127.0.0.1") << QByteArray("\\/") << true;
}

void tst_ZRUpdater::addressIsTakenFromTheAnswer()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QByteArray, slash);
    QFETCH(bool, secure);
    QByteArray address = url().toLatin1();
    if (secure) {
        address.replace("http:", "https:");
    }
    address.replace("/", slash);
    m_rig->setAnswer(R"({"UPDATE_VERSION":"2","UPDATE_PRIORITY":"MAN","UPDATE_URL":")" + before + address +
                     after + "\"}");
    m_rig->check();
    QTRY_COMPARE(m_rig->prompt->questions, QList<QStringList>{asked(pleaseClose, "OK")});
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_ZRUpdater::unknownPriorityDoesNothing_data()
{
    QTest::addColumn<QByteArray>("priority");
    for (const char *priority : {"", "low", "Mid", "high", "man", "MAN ", "MANDATORY", "5"}) {
        QTest::newRow(priority) << QByteArray(priority);
    }
}

void tst_ZRUpdater::unknownPriorityDoesNothing()
{
    QFETCH(QByteArray, priority);
    m_rig->setOffer("2", priority.constData(), url());
    m_rig->check();
    QTest::qWait(30);
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QVERIFY(m_rig->prompt->questions.isEmpty());
    QCOMPARE(m_rig->server.requestCount("/installer"), 0);
}

void tst_ZRUpdater::answerThatOffersNothingLeavesTheOffer_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("this version") << QByteArray(
        R"({"UPDATE_VERSION":"1.10","UPDATE_PRIORITY":"LOW","UPDATE_URL":""})");
    QTest::newRow("portal page") << QByteArray("<html><body>Sign in</body></html>");
    QTest::newRow("unknown priority")
        << QByteArray(R"({"UPDATE_VERSION":"3","UPDATE_PRIORITY":"x","UPDATE_URL":""})");
    QTest::newRow("empty") << QByteArray();
}

void tst_ZRUpdater::answerThatOffersNothingLeavesTheOffer()
{
    QFETCH(QByteArray, body);
    m_rig->setOffer("2", "LOW", url());
    m_rig->check();
    m_rig->setAnswer(body);
    m_rig->check();
    m_rig->updater->onUpdateCanceled();
    QCOMPARE(m_rig->signalsSeen.last(), QStringLiteral("available 2"));
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed(); // it still stands in the window
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_ZRUpdater::laterOfferReplacesTheOneBefore()
{
    m_rig->setOffer("2", "LOW", m_rig->server.url("/withdrawn"));
    m_rig->check();
    m_rig->setOffer("3", "LOW", url());
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"available 2", "available 3"}));
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(m_rig->server.requestCount("/withdrawn"), 0);
}

void tst_ZRUpdater::copyThatIsKeptUpToDateOtherwiseIsOnlyToldOf()
{
    ZRUpdater::Setup setup = m_rig->setup();
    setup.mode = ZRUpdater::Mode::Tell;
    m_rig->build(setup);
    for (const char *priority : {"LOW", "MID", "HIGH", "MAN"}) {
        m_rig->setOffer("2", priority, url());
        m_rig->check();
    }
    QCOMPARE(m_rig->prompt->questions.size(), 1); // once for each version
    QVERIFY(m_rig->prompt->questions.first().first().endsWith(QLatin1String("this copy was installed: 2")));
    QCOMPARE(m_rig->prompt->questions.first().at(2), QString());
    m_rig->prompt->press(0);
    m_rig->setOffer("3", "MAN", url());
    m_rig->check();
    QCOMPARE(m_rig->prompt->questions.size(), 2);
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QCOMPARE(m_rig->server.requestCount("/installer"), 0);
}

void tst_ZRUpdater::lowOffersInTheWindow()
{
    m_rig->setOffer("2.5", "LOW", url());
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, seen({"available 2.5"}));
    QVERIFY(m_rig->prompt->questions.isEmpty());
    QVERIFY(!m_rig->updater->isDownloading());

    // The button is on every page that shows the offer; it acts once.
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    m_rig->updater->onUpdateAllowed();
    QVERIFY(m_rig->updater->isDownloading());
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(m_rig->signalsSeen, seen({"available 2.5", "start", "complete"}));
    QCOMPARE(m_rig->server.requestCount("/installer"), 1);
    QVERIFY(!m_rig->updater->isDownloading());
    QCOMPARE(m_rig->quits, 0);
}

void tst_ZRUpdater::midAsks()
{
    m_rig->setOffer("2", "MID", url());
    m_rig->check();
    QCOMPARE(m_rig->prompt->questions, QList<QStringList>{asked(question, "OK", "Cancel")});
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->prompt->press(0);
    QCOMPARE(m_rig->signalsSeen, seen({"start"}));
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_ZRUpdater::midIsNotAskedTwice()
{
    m_rig->setOffer("2", "MID", url());
    m_rig->check();
    m_rig->check();
    QCOMPARE(m_rig->prompt->questions.size(), 1);
    m_rig->prompt->press(1);
    m_rig->check();
    QCOMPARE(m_rig->prompt->questions.size(), 2);
}

void tst_ZRUpdater::midDeclinedOffersInTheWindow()
{
    m_rig->setOffer("2.1", "MID", url());
    m_rig->check();
    m_rig->prompt->press(1);
    QCOMPARE(m_rig->signalsSeen, seen({"available 2.1"}));
    QCOMPARE(m_rig->server.requestCount("/installer"), 0);
}

void tst_ZRUpdater::highOrders()
{
    m_rig->setOffer("2", "HIGH", url());
    m_rig->check();
    QCOMPARE(m_rig->prompt->questions, QList<QStringList>{asked(order, "OK")});
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->prompt->press(0);
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(m_rig->signalsSeen, seen({"start", "complete"}));
}

void tst_ZRUpdater::highReplacesItsQuestion()
{
    m_rig->setOffer("2", "HIGH", url());
    m_rig->check();
    m_rig->check();
    QCOMPARE(m_rig->prompt->questions.size(), 2); // in the one place that the prompt has
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->prompt->press(0);
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(m_rig->server.requestCount("/installer"), 1);
}

void tst_ZRUpdater::mandatoryDownloadsInSilenceAndAsksToClose()
{
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QVERIFY(m_rig->updater->isDownloading());
    QVERIFY(m_rig->prompt->questions.isEmpty());
    QTRY_COMPARE(m_rig->prompt->questions, QList<QStringList>{asked(pleaseClose, "OK")});
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QCOMPARE(m_rig->quits, 0);
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onCloseAllowed");
    m_rig->prompt->press(0);
    QCOMPARE(m_rig->quits, 1);
}

void tst_ZRUpdater::mandatoryIsForgottenWithTheNextAnswer()
{
    m_rig->setOffer("2", "MAN", m_rig->server.url("/missing"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("server replied")));
    m_rig->check();
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
    m_rig->setOffer("2", "LOW", url());
    m_rig->check();
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(m_rig->prompt->questions, QList<QStringList>{asked(failed, "OK")});
}

void tst_ZRUpdater::promptThatIsGoneIsNotAsked()
{
    m_rig->setOffer("2", "MID", url());
    m_rig->prompt.reset();
    m_rig->check();
    QCOMPARE(m_rig->signalsSeen, QStringList());
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_VERIFY(!m_rig->updater->isDownloading());
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_ZRUpdater::promptThatOutlivesTheUpdaterDoesNothing()
{
    m_rig->setOffer("2", "MID", url());
    m_rig->check();
    m_rig->updater.reset();
    m_rig->prompt->press(0);
    QCOMPARE(m_rig->signalsSeen, QStringList());
}

// The shared one outlives the application object, but nothing of it may that needs the application.
int main(int argc, char **argv)
{
    int result = 0;
    {
        QCoreApplication application(argc, argv);
        qputenv("VELTRIX_API_URL", "http://127.0.0.1:1/api/");
        tst_ZRUpdater test;
        result = QTest::qExec(&test, argc, argv);
        ZRUpdater::instance()->arm();
        ZRUpdater::instance()->startCheckingPeriodically();
        if (ZRUpdater::instance()->children().isEmpty()) {
            qCritical("the shared updater has not asked");
            ++result;
        }
    }
    if (!ZRUpdater::instance()->children().isEmpty()) {
        qCritical("the shared updater keeps objects past the application");
        ++result;
    }
    return result;
}

#include "tst_ZRUpdater.moc"
