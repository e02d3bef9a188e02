#include "remote/RemoteMessage.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_RemoteMessage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRequestComesBackAsItWas();
    void anAnswerComesBackAsItWas();
    void aMessageIsOneLine();
    void whatIsNoRequestGetsASentence_data();
    void whatIsNoRequestGetsASentence();
    void aRequestOfTheLargestSizeIsTaken();
    void whatIsNoAnswerIsNone_data();
    void whatIsNoAnswerIsNone();
    void anAnswerThatIsTooLongSaysSo();
};

namespace
{

QByteArray withoutEnd(QByteArray line)
{
    line.chop(1);
    return line;
}

} // namespace

void tst_RemoteMessage::aRequestComesBackAsItWas()
{
    const RemoteRequest request{
        QStringLiteral("use"),
        {QString::fromUtf8("Müller's \"Mix\"\n\t"), QString(), QString::fromUtf8("\xF0\x9F\x8E\x9B")},
        true};
    QString fault;
    const auto read = RemoteMessage::readRequest(withoutEnd(RemoteMessage::write(request)), &fault);
    QVERIFY2(read, qPrintable(fault));
    QCOMPARE(read->command, request.command);
    QCOMPARE(read->arguments, request.arguments);
    QCOMPARE(read->json, true);
}

void tst_RemoteMessage::anAnswerComesBackAsItWas()
{
    const auto read = RemoteMessage::readAnswer(
        withoutEnd(RemoteMessage::write(RemoteAnswer{3, QStringLiteral("one\ntwo \u201cthree\u201d")})));
    QVERIFY(read);
    QCOMPARE(read->status, 3);
    QCOMPARE(read->text, QStringLiteral("one\ntwo \u201cthree\u201d"));
}

void tst_RemoteMessage::aMessageIsOneLine()
{
    for (const QByteArray &line :
         {RemoteMessage::write(RemoteRequest{QStringLiteral("use"), {QStringLiteral("a\nb")}, false}),
          RemoteMessage::write(RemoteAnswer{0, QStringLiteral("a\nb\n")})}) {
        QCOMPARE(line.count('\n'), 1);
        QVERIFY(line.endsWith('\n'));
    }
}

void tst_RemoteMessage::whatIsNoRequestGetsASentence_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("fault");

    const QString noCommand = QStringLiteral("The request names no command.");
    const QString noText = QStringLiteral("The request has an argument that is no text.");
    QTest::newRow("nothing") << QByteArray() << noCommand;
    QTest::newRow("noise") << QByteArray("\xFF\x00\x01{", 4) << noCommand;
    QTest::newRow("blanks") << QByteArray(60000, ' ') << noCommand;
    QTest::newRow("cut off") << QByteArray("use") << noCommand;
    QTest::newRow("neither plain nor JSON") << QByteArray("use Mix") << noCommand;
    QTest::newRow("a number for a command") << QByteArray("7 plain") << noCommand;
    QTest::newRow("a sentence for a command") << QByteArray("show%20it plain") << noCommand;
    QTest::newRow("a long command") << QByteArray(RemoteMessage::maximumCommand + 1, 'a') + " plain"
                                    << noCommand;
    QTest::newRow("no UTF-8") << QByteArray("use plain %C3%28") << noText;
    QTest::newRow("half a surrogate pair") << QByteArray("use plain %ED%A0%80") << noText;
    QTest::newRow("NUL in an argument") << QByteArray("use plain a%00b") << noText;
    QTest::newRow("many arguments") << QByteArray("use plain a b c d e")
                                    << QStringLiteral("The request has too many arguments.");
    QTest::newRow("too long") << QByteArray(RemoteMessage::maximumRequest + 1, ' ')
                              << QStringLiteral("The request is too long.");
}

void tst_RemoteMessage::whatIsNoRequestGetsASentence()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, fault);
    QString said;
    QVERIFY(!RemoteMessage::readRequest(line, &said));
    QCOMPARE(said, fault);
}

void tst_RemoteMessage::aRequestOfTheLargestSizeIsTaken()
{
    QByteArray line("use plain ");
    line += QByteArray(RemoteMessage::maximumRequest - line.size(), 'x');
    QCOMPARE(line.size(), RemoteMessage::maximumRequest);
    QString fault;
    QVERIFY2(RemoteMessage::readRequest(line, &fault), qPrintable(fault));
}

void tst_RemoteMessage::whatIsNoAnswerIsNone_data()
{
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no text") << QByteArray("0");
    QTest::newRow("no status") << QByteArray(" text");
    QTest::newRow("two texts") << QByteArray("0 a b");
    QTest::newRow("no UTF-8") << QByteArray("0 \xFF");
    QTest::newRow("a status that no process has") << QByteArray("256 text");
    QTest::newRow("a negative status") << QByteArray("-1 text");
    QTest::newRow("half a status") << QByteArray("0.5 text");
}

void tst_RemoteMessage::whatIsNoAnswerIsNone()
{
    QFETCH(QByteArray, line);
    QVERIFY(!RemoteMessage::readAnswer(line));
}

void tst_RemoteMessage::anAnswerThatIsTooLongSaysSo()
{
    const QString text(RemoteMessage::maximumAnswer, QLatin1Char('x'));
    const auto read = RemoteMessage::readAnswer(withoutEnd(RemoteMessage::write(RemoteAnswer{0, text})));
    QVERIFY(read);
    QCOMPARE(read->status, 1);
    QCOMPARE(read->text, QStringLiteral("The answer is too long."));
}

QTEST_GUILESS_MAIN(tst_RemoteMessage)
#include "tst_RemoteMessage.moc"
