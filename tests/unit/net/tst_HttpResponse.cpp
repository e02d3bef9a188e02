#include "net/HttpResponse.h"
#include "tests/support/main/Main.h"

#include <QTest>

namespace
{

const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n";

/// What comes of an answer that arrives in pieces of @p size bytes.
struct Taken {
    Taken(const QByteArray &answer, int size)
    {
        for (int at = 0; at < answer.size() && taken; at += size) {
            taken = response.take(answer.mid(at, size), body);
        }
    }

    HttpResponse response;
    QByteArray body;
    bool taken = true;
};

} // namespace

class tst_HttpResponse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeAnswerIsTakenHoweverItArrives_data();
    void wholeAnswerIsTakenHoweverItArrives();
    void headIsTakenApart();
    void earlyEndIsAnError_data();
    void earlyEndIsAnError();
    void whatIsNoAnswerIsRefused_data();
    void whatIsNoAnswerIsRefused();
    void whatHasNoEndIsRefused_data();
    void whatHasNoEndIsRefused();
    void chunksOfOneByteAreNotTooMany();
};

void tst_HttpResponse::wholeAnswerIsTakenHoweverItArrives_data()
{
    using End = HttpResponse::End;
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("end");
    const auto row = [](const char *name, const QByteArray &answer, const QByteArray &body, End end) {
        QTest::newRow(name) << answer << body << int(end);
    };
    row("with a length", head + "Content-Length: 5\r\n\r\nhello", "hello", End::Length);
    row("more than its length", head + "Content-Length: 5\r\n\r\nhello, world", "hello", End::Length);
    row("length twice", head + "Content-Length: 5\r\ncontent-length:5\r\n\r\nhello", "hello", End::Length);
    row("empty", head + "Content-Length: 0\r\n\r\n", "", End::Length);
    row("none", "HTTP/1.1 204 No Content\r\n\r\n", "", End::Length);
    row("chunks", head + "Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n00A\r\n, my world\r\n0\r\n\r\n",
        "hello, my world", End::Chunks);
    row("chunks with extensions and trailers",
        head + "transfer-encoding: Chunked\r\n\r\n5;name=\"value\"\r\nhello\r\n0;last\r\nMore: of it\r\n\r\n",
        "hello", End::Chunks);
    row("chunks and a length that is not meant",
        head + "Content-Length: 3\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n", "hello",
        End::Chunks);
    row("line feeds alone", "HTTP/1.0 200\nContent-Length: 5\n\nhello", "hello", End::Length);
    row("behind an interim answer",
        "HTTP/1.1 103 Early Hints\r\nContent-Length: 9\r\n\r\n" + head + "Content-Length: 5\r\n\r\nhello",
        "hello", End::Length);
    row("ends with the connection", head + "\r\nhello", "hello", End::Connection);
}

void tst_HttpResponse::wholeAnswerIsTakenHoweverItArrives()
{
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, body);
    QFETCH(int, end);
    for (int size = 1; size <= answer.size(); ++size) {
        Taken taken(answer, size);
        QVERIFY2(taken.taken, qPrintable(taken.response.error()));
        QCOMPARE(taken.response.isComplete(), end != int(HttpResponse::End::Connection));
        QVERIFY(taken.response.close());
        QVERIFY(taken.response.isComplete());
        QCOMPARE(taken.body, body);
        QCOMPARE(int(taken.response.end()), end);
    }
}

void tst_HttpResponse::headIsTakenApart()
{
    HttpResponse response;
    QByteArray body;
    QVERIFY(response.take("HTTP/1.1 404 Not here\r\nServer:  a b \r\nX-Empty:\r\n", body));
    QVERIFY(!response.isHeadComplete());
    QVERIFY(response.take("Content-Length: 12\r\n\r\n", body));
    QVERIFY(response.isHeadComplete());
    QCOMPARE(response.status(), 404);
    QCOMPARE(response.reason(), QByteArray("Not here"));
    const HttpResponse::Headers expected{{"Server", "a b"}, {"X-Empty", ""}, {"Content-Length", "12"}};
    QCOMPARE(response.headers(), expected);
    QCOMPARE(response.length(), 12LL);
}

void tst_HttpResponse::earlyEndIsAnError_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("length") << head + "Content-Length: 5\r\n\r\nhello";
    QTest::newRow("chunks")
        << head + "Transfer-Encoding: chunked\r\n\r\n3\r\nhel\r\n2;x\r\nlo\r\n0\r\nMore: yes\r\n\r\n";
}

// Wherever the connection is cut.
void tst_HttpResponse::earlyEndIsAnError()
{
    QFETCH(QByteArray, answer);
    for (int size = 0; size < answer.size(); ++size) {
        HttpResponse response;
        QByteArray body;
        QVERIFY(response.take(answer.left(size), body));
        QVERIFY2(!response.close(), answer.left(size).constData());
        QVERIFY(response.error().startsWith(QLatin1String("Connection closed")));
    }
}

void tst_HttpResponse::whatIsNoAnswerIsRefused_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("another protocol") << QByteArray("SSH-2.0-server\r\n");
    QTest::newRow("an older one") << QByteArray("<html></html>\n");
    QTest::newRow("a newer one") << QByteArray("HTTP/2 200 OK\r\n");
    QTest::newRow("status of letters") << QByteArray("HTTP/1.1 2x0 OK\r\n");
    QTest::newRow("status of four digits") << QByteArray("HTTP/1.1 2000 OK\r\n");
    QTest::newRow("no colon") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length 5\r\n");
    QTest::newRow("no name") << QByteArray("HTTP/1.1 200 OK\r\n: 5\r\n");
    QTest::newRow("blank in a name") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length : 5\r\n");
    QTest::newRow("folded header") << QByteArray("HTTP/1.1 200 OK\r\nA: b\r\n c: d\r\n");
    QTest::newRow("negative length") << head + "Content-Length: -1\r\n\r\n";
    QTest::newRow("signed length") << head + "Content-Length: +5\r\n\r\n";
    QTest::newRow("length beyond numbers") << head + "Content-Length: 99999999999999999999\r\n\r\n";
    QTest::newRow("two lengths") << head + "Content-Length: 5\r\nContent-Length: 6\r\n\r\n";
    QTest::newRow("compressed") << head + "Transfer-Encoding: gzip, chunked\r\n\r\n";
    QTest::newRow("chunked twice") << head +
                                          "Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked\r\n\r\n";
    QTest::newRow("chunk without a size") << head + "Transfer-Encoding: chunked\r\n\r\n\r\n";
    QTest::newRow("chunk of a negative size") << head + "Transfer-Encoding: chunked\r\n\r\n-5\r\n";
    QTest::newRow("chunk of a size with 0x") << head + "Transfer-Encoding: chunked\r\n\r\n0x5\r\n";
    QTest::newRow("chunk beyond numbers") << head + "Transfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\n";
    QTest::newRow("chunk longer than its size") << head + "Transfer-Encoding: chunked\r\n\r\n2\r\nhello\r\n";
    QTest::newRow("another protocol is wanted") << QByteArray("HTTP/1.1 101 Switching\r\n\r\n");
}

void tst_HttpResponse::whatIsNoAnswerIsRefused()
{
    QFETCH(QByteArray, answer);
    for (const int size : {1, answer.size()}) {
        const Taken taken(answer, size);
        QVERIFY(!taken.taken);
        QVERIFY(!taken.response.error().isEmpty());
        QVERIFY(!taken.response.isComplete());
    }
}

void tst_HttpResponse::whatHasNoEndIsRefused_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("repeated");
    const QByteArray chunked = head + "Transfer-Encoding: chunked\r\n\r\n";
    QTest::newRow("status line") << QByteArray("HTTP/1.1 200 ") << QByteArray("x");
    QTest::newRow("before the status line") << QByteArray() << QByteArray("x");
    QTest::newRow("header") << head + "A: " << QByteArray("x");
    QTest::newRow("headers") << head << QByteArray("A: b\r\n");
    QTest::newRow("interim answers") << QByteArray() << QByteArray("HTTP/1.1 100 Continue\r\n\r\n");
    QTest::newRow("chunk size") << chunked << QByteArray("0");
    QTest::newRow("chunk extension") << chunked + "5;" << QByteArray("x");
    QTest::newRow("extension behind much")
        << chunked + "40000\r\n" + QByteArray(0x40000, 'b') + "\r\n5;" << QByteArray("x");
    QTest::newRow("extensions") << chunked << "1;" + QByteArray(1000, 'x') + "\r\nb\r\n";
    QTest::newRow("trailer") << chunked + "0\r\nA: " << QByteArray("x");
    QTest::newRow("trailers") << chunked + "0\r\n" << QByteArray("A: b\r\n");
}

void tst_HttpResponse::whatHasNoEndIsRefused()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, repeated);
    HttpResponse response;
    QByteArray body;
    QVERIFY(response.take(start, body));
    qint64 more = 0;
    while (response.take(repeated, body)) {
        more += repeated.size();
        QVERIFY(more < 4 * HttpResponse::maximumHeadSize);
    }
    QVERIFY(!response.error().isEmpty());
}

void tst_HttpResponse::chunksOfOneByteAreNotTooMany()
{
    HttpResponse response;
    QByteArray body;
    QVERIFY(response.take(head + "Transfer-Encoding: chunked\r\n\r\n", body));
    for (int i = 0; i < 200'000; ++i) {
        QVERIFY(response.take("1\r\nx\r\n", body));
    }
    QVERIFY(response.take("0\r\n\r\n", body));
    QVERIFY(response.isComplete());
    QCOMPARE(body.size(), 200'000);
}

QTEST_GUILESS_MAIN(tst_HttpResponse)
#include "tst_HttpResponse.moc"
