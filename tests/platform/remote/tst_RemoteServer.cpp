#include "remote/RemoteClient.h"
#include "remote/RemotePlace.h"
#include "remote/RemoteServer.h"
#include "tests/support/main/Main.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

/// Both ends over a real socket, in a runtime folder of the test's own.
class tst_RemoteServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aRequestIsAnswered();
    void manyAreAnsweredInTurn();
    void aLongAnswerArrivesWhole();
    void withoutACopyTheClientSaysSo();
    void afterAKillTheClientSaysSo();
    void aCopyThatSaysNothingHoldsNobodyUp();
    void whatIsNoRequestIsAnsweredWithASentence();
    void aRequestInPiecesIsTaken();
    void aRequestWithoutEndIsCutOff();
    void whoSaysNothingIsLetGo();
    void whoDoesNotListenIsLetGo();
    void whoLeavesEarlyHarmsNothing();
    void tooManyAtATimeAreToldSo();
    void onlyTheUserMayUseThePlace();
    void aForeignPlaceIsRefused_data();
    void aForeignPlaceIsRefused();
    void whatIsNoSocketIsLeftAlone();
    void whatAKilledCopyLeftIsInNobodysWay();
    void aSecondCopyDoesNotTakeThePlaceOfTheFirst();

private:
    QString folder() const { return m_runtime->filePath(QStringLiteral("veltrix")); }
    QString socketName() const { return folder() + QStringLiteral("/remote"); }
    std::unique_ptr<RemoteServer> server(int patience = RemoteServer::patience);
    RemoteAnswer ask(const QString &command, const QStringList &arguments = {});
    std::unique_ptr<QLocalSocket> connected();
    bool leaveDeadSocket();

    std::optional<QTemporaryDir> m_runtime;
    QString m_longText;
};

namespace
{

constexpr int shortPatience = 200; // ms

QByteArray everythingFrom(QLocalSocket &socket)
{
    QByteArray bytes;
    const auto over = [&] {
        bytes += socket.readAll();
        return socket.state() == QLocalSocket::UnconnectedState;
    };
    return QTest::qWaitFor(over, 10000) ? bytes : QByteArrayLiteral("still connected");
}

} // namespace

void tst_RemoteServer::init()
{
    m_runtime.emplace();
    QVERIFY(m_runtime->isValid());
    qputenv("XDG_RUNTIME_DIR", m_runtime->path().toLocal8Bit());
}

void tst_RemoteServer::cleanup()
{
    m_runtime.reset();
}

// It says its request back, and knows some commands.
std::unique_ptr<RemoteServer> tst_RemoteServer::server(int patience)
{
    auto server = std::make_unique<RemoteServer>(
        [this](const RemoteRequest &request) {
            return request.command == QLatin1String("long")
                       ? RemoteAnswer{0, m_longText}
                       : RemoteAnswer{7, request.command + request.arguments.join(QLatin1Char('|'))};
        },
        patience);
    return server->listen(QString()) ? std::move(server) : nullptr;
}

// From another thread, as the client waits for what this one's event loop does.
RemoteAnswer tst_RemoteServer::ask(const QString &command, const QStringList &arguments)
{
    auto asked = std::async(std::launch::async, [&] {
        return RemoteClient::ask({command, arguments, false}, QString(), 5000);
    });
    const auto over = [&] { return asked.wait_for(std::chrono::seconds(0)) == std::future_status::ready; };
    return QTest::qWaitFor(over, 10000) ? asked.get() : RemoteAnswer{99, QStringLiteral("still waiting")};
}

std::unique_ptr<QLocalSocket> tst_RemoteServer::connected()
{
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(socketName());
    return socket->waitForConnected(1000) ? std::move(socket) : nullptr;
}

// As a copy that was killed leaves it: in the file system, and nobody behind it.
bool tst_RemoteServer::leaveDeadSocket()
{
    QLocalServer dying;
    if (RemotePlace::toListen(QString()).name.isEmpty() || !dying.listen(socketName())) {
        return false;
    }
    const QByteArray name = QFile::encodeName(socketName());
    const QByteArray aside = name + ".aside";
    const bool kept = ::link(name.constData(), aside.constData()) == 0;
    dying.close();
    return kept && ::rename(aside.constData(), name.constData()) == 0;
}

void tst_RemoteServer::aRequestIsAnswered()
{
    const auto running = server();
    QVERIFY(running);
    const RemoteAnswer answer = ask(QStringLiteral("use"), {QStringLiteral("M\u00fc"), QStringLiteral("x")});
    QCOMPARE(answer.status, 7);
    QCOMPARE(answer.text, QStringLiteral("useM\u00fc|x"));
}

void tst_RemoteServer::manyAreAnsweredInTurn()
{
    const auto running = server();
    QVERIFY(running);
    for (int i = 0; i < 3 * RemoteServer::mostClients; ++i) {
        QCOMPARE(ask(QStringLiteral("show")).text, QStringLiteral("show"));
    }
}

void tst_RemoteServer::aLongAnswerArrivesWhole()
{
    const auto running = server();
    QVERIFY(running);
    m_longText = QString(3 * 1024 * 1024, QLatin1Char('x'));
    QCOMPARE(ask(QStringLiteral("long")).text, m_longText);
}

void tst_RemoteServer::withoutACopyTheClientSaysSo()
{
    const RemoteAnswer answer = ask(QStringLiteral("show"));
    QCOMPARE(answer.status, RemoteClient::notRunning);
    QCOMPARE(answer.text, QStringLiteral("Veltrix is not running."));
    QVERIFY(!QFileInfo::exists(folder())); // asking leaves nothing behind
}

void tst_RemoteServer::afterAKillTheClientSaysSo()
{
    QVERIFY(leaveDeadSocket());
    QCOMPARE(ask(QStringLiteral("show")).status, RemoteClient::notRunning);
}

void tst_RemoteServer::aCopyThatSaysNothingHoldsNobodyUp()
{
    QVERIFY(!RemotePlace::toListen(QString()).name.isEmpty());
    QLocalServer silent;
    QVERIFY(silent.listen(socketName()));
    QElapsedTimer time;
    time.start();
    const RemoteAnswer answer =
        RemoteClient::ask({QStringLiteral("show"), {}, false}, QString(), shortPatience);
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.text, QStringLiteral("The running Veltrix does not answer."));
    QVERIFY(time.elapsed() < 5000);
}

void tst_RemoteServer::whatIsNoRequestIsAnsweredWithASentence()
{
    const auto running = server();
    QVERIFY(running);
    for (const QByteArray &noise : {QByteArray("\n"), QByteArray("hello\n"), QByteArray("\0\xFF\xFE\n", 4),
                                    QByteArray("GET / HTTP/1.1\r\n\r\n"), QByteArray(50000, ' ') + '\n'}) {
        const auto client = connected();
        QVERIFY(client);
        client->write(noise);
        const auto answer = RemoteMessage::readAnswer(everythingFrom(*client).trimmed());
        QVERIFY(answer);
        QCOMPARE(answer->status, 2);
        QCOMPARE(answer->text, QStringLiteral("The request names no command."));
    }
    QCOMPARE(ask(QStringLiteral("show")).status, 7);
}

void tst_RemoteServer::aRequestInPiecesIsTaken()
{
    const auto running = server();
    QVERIFY(running);
    const auto client = connected();
    QVERIFY(client);
    for (const char c : QByteArray("show plain\n")) {
        client->write(&c, 1);
        QVERIFY(client->flush());
        QTest::qWait(1);
    }
    const auto answer = RemoteMessage::readAnswer(everythingFrom(*client).trimmed());
    QVERIFY(answer);
    QCOMPARE(answer->text, QStringLiteral("show"));
}

void tst_RemoteServer::aRequestWithoutEndIsCutOff()
{
    const auto running = server();
    QVERIFY(running);
    const auto client = connected();
    QVERIFY(client);
    client->write(QByteArray(RemoteMessage::maximumRequest + 1, 'x'));
    const auto answer = RemoteMessage::readAnswer(everythingFrom(*client).trimmed());
    QVERIFY(answer);
    QCOMPARE(answer->text, QStringLiteral("The request is too long."));
    const auto flood = connected();
    QVERIFY(flood);
    flood->write(QByteArray(100 * RemoteMessage::maximumRequest, 'x'));
    QTRY_COMPARE(flood->state(), QLocalSocket::UnconnectedState);
    QCOMPARE(ask(QStringLiteral("show")).status, 7);
}

void tst_RemoteServer::whoSaysNothingIsLetGo()
{
    const auto running = server(shortPatience);
    QVERIFY(running);
    const auto mute = connected();
    const auto begins = connected();
    QVERIFY(mute && begins);
    begins->write("sho");
    QCOMPARE(everythingFrom(*mute), QByteArray());
    QCOMPARE(everythingFrom(*begins), QByteArray());
}

void tst_RemoteServer::whoDoesNotListenIsLetGo()
{
    const auto running = server(shortPatience);
    QVERIFY(running);
    m_longText = QString(3 * 1024 * 1024, QLatin1Char('x')); // more than a socket takes at a time
    std::vector<std::unique_ptr<QLocalSocket>> deaf;
    for (int i = 0; i < RemoteServer::mostClients; ++i) {
        deaf.push_back(connected());
        QVERIFY(deaf.back());
        deaf.back()->setReadBufferSize(1);
        deaf.back()->write("long plain\n");
        deaf.back()->flush();
    }
    // All places are taken until their time is over.
    const bool letGo =
        QTest::qWaitFor([&] { return ask(QStringLiteral("show")).text == QLatin1String("show"); }, 10000);
    QVERIFY(letGo);
}

void tst_RemoteServer::whoLeavesEarlyHarmsNothing()
{
    const auto running = server();
    QVERIFY(running);
    for (const char *words : {"", "sho", "show plain\n"}) {
        for (int i = 0; i < 3 * RemoteServer::mostClients; ++i) {
            const auto client = connected();
            QVERIFY(client);
            client->write(words);
            client->flush();
            client->abort();
            QTest::qWait(1);
        }
    }
    QCOMPARE(ask(QStringLiteral("show")).status, 7);
}

void tst_RemoteServer::tooManyAtATimeAreToldSo()
{
    const auto running = server();
    QVERIFY(running);
    std::vector<std::unique_ptr<QLocalSocket>> waiting;
    for (int i = 0; i < RemoteServer::mostClients; ++i) {
        waiting.push_back(connected());
        QVERIFY(waiting.back());
        QTest::qWait(1);
    }
    const RemoteAnswer answer = ask(QStringLiteral("show"));
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.text, QStringLiteral("Too many commands at a time: try again."));
    waiting.clear();
    QTRY_COMPARE(ask(QStringLiteral("show")).status, 7);
}

void tst_RemoteServer::onlyTheUserMayUseThePlace()
{
    const auto running = server();
    QVERIFY(running);
    struct stat found = {};
    QCOMPARE(::stat(QFile::encodeName(folder()).constData(), &found), 0);
    QCOMPARE(found.st_mode & 0777U, 0700U);
    QCOMPARE(found.st_uid, ::geteuid());
    QCOMPARE(::stat(QFile::encodeName(socketName()).constData(), &found), 0);
    QCOMPARE(found.st_mode & 0077U, 0U);
}

void tst_RemoteServer::aForeignPlaceIsRefused_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("fault");

    QTest::newRow("open to others") << QStringLiteral("open") << QStringLiteral("is open to other users");
    QTest::newRow("a link") << QStringLiteral("link") << QStringLiteral("is no folder");
    QTest::newRow("a file") << QStringLiteral("file") << QStringLiteral("is no folder");
    QTest::newRow("another user's") << QStringLiteral("foreign") << QStringLiteral("is another user's");
}

void tst_RemoteServer::aForeignPlaceIsRefused()
{
    QFETCH(QString, what);
    QFETCH(QString, fault);
    const QByteArray path = QFile::encodeName(folder());
    const QTemporaryDir elsewhere;
    if (what == QLatin1String("file")) {
        QFile file(folder());
        QVERIFY(file.open(QIODevice::WriteOnly));
    } else if (what == QLatin1String("link")) {
        QCOMPARE(::symlink(QFile::encodeName(elsewhere.path()).constData(), path.constData()), 0);
    } else {
        QCOMPARE(::mkdir(path.constData(), 0700), 0);
        QCOMPARE(::chmod(path.constData(), what == QLatin1String("open") ? 0777 : 0700), 0);
        if (what == QLatin1String("foreign") && ::chown(path.constData(), 65534, 65534) != 0) {
            QSKIP("only root can give a folder away");
        }
    }
    const QRegularExpression refused(QStringLiteral("^no remote control: .*") + fault);
    QTest::ignoreMessage(QtWarningMsg, refused);
    QVERIFY(!server());
    const QRegularExpression unasked(QStringLiteral("^nothing was asked: .*") + fault);
    QTest::ignoreMessage(QtWarningMsg, unasked);
    QCOMPARE(RemoteClient::ask({QStringLiteral("show"), {}, false}, QString()).status,
             RemoteClient::notRunning);
    QVERIFY(QDir(elsewhere.path()).isEmpty());
}

void tst_RemoteServer::whatIsNoSocketIsLeftAlone()
{
    QCOMPARE(::mkdir(QFile::encodeName(folder()).constData(), 0700), 0);
    QFile file(socketName());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("mine");
    file.close();
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^no remote control: .*/remote is no socket$")));
    QVERIFY(!server());
    QCOMPARE(file.size(), 4);
}

void tst_RemoteServer::whatAKilledCopyLeftIsInNobodysWay()
{
    QVERIFY(leaveDeadSocket());
    const auto running = server();
    QVERIFY(running);
    QCOMPARE(ask(QStringLiteral("show")).status, 7);
}

void tst_RemoteServer::aSecondCopyDoesNotTakeThePlaceOfTheFirst()
{
    const auto running = server();
    QVERIFY(running);
    QTest::ignoreMessage(QtWarningMsg, "another copy of the program is remote-controlled: this one is not");
    QVERIFY(!server());
    QCOMPARE(ask(QStringLiteral("show")).status, 7);
}

QTEST_GUILESS_MAIN(tst_RemoteServer)
#include "tst_RemoteServer.moc"
