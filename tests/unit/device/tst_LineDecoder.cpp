#include "device/LineDecoder.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/random/Seeds.h"
#include "tests/unit/device/EventText.h"
#include "tests/unit/device/NaiveFraming.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QTest>

#include <memory>

namespace
{

QVector<DeviceEvent> feed(LineDecoder &decoder, const QByteArray &bytes)
{
    QVector<DeviceEvent> events;
    decoder.append(bytes);
    while (const auto event = decoder.next()) {
        events.append(*event);
    }
    return events;
}

QByteArray message(const QByteArray &body)
{
    return body + "\n\r\n";
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Feeds the pieces to the decoder and to the reference; the events of each, piece by piece.
bool agreesWithReference(const QVector<QByteArray> &pieces, QString *difference)
{
    LineDecoder decoder;
    NaiveFraming reference;
    for (int i = 0; i < pieces.size(); ++i) {
        const QStringList actual = eventTexts(feed(decoder, pieces.at(i)));
        const QStringList expected = eventTexts(reference.feed(pieces.at(i)));
        if (actual != expected) {
            *difference = QStringLiteral("piece %1 of %2: got (%3), expected (%4)")
                              .arg(i)
                              .arg(pieces.size())
                              .arg(actual.join(QLatin1String(", ")), expected.join(QLatin1String(", ")));
            return false;
        }
    }
    return true;
}

} // namespace

class TestLineDecoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log = std::make_unique<LogCapture>(); }
    void cleanup()
    {
        const QStringList unexpected = m_log->takeLines();
        m_log.reset();
        QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char('\n'))));
    }

    void decodesOneMessage_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *name, const QByteArray &bytes, const char *expected) {
            const QString text = QLatin1String(expected);
            QTest::newRow(name) << bytes << (text.isEmpty() ? QStringList() : QStringList(text));
        };
        row("press of the first button", message("BP0"), "button 0 down");
        row("release of the last button", message("BR9"), "button 9 up");
        row("any third byte of a button is its code minus 48", message("BPA"), "button 17 down");
        row("a button's third byte is unsigned", message("BR\xff"), "button 207 up");
        row("a button without a number takes the terminator's first byte", message("BP"), "button -38 down");
        row("BX is neither a button nor a number", message("BX1"), "");
        row("lower case is no command", message("bp1"), "");
        row("knob type", message("KN+"), "knob 0x2B");
        row("knob type of any byte", message(QByteArray("KN\0", 3)), "knob 0x00");
        row("knob type above 127", message("KN\xfe"), "knob 0xFE");
        row("count", message("12"), "count 12");
        row("negative count", message("-3"), "count -3");
        row("count with plus sign", message("+3"), "count 3");
        row("blanks around a count", message(" 4 "), "count 4");
        row("the largest count", message("2147483647"), "count 2147483647");
        row("a count beyond int", message("2147483648"), "");
        row("hexadecimal is no count", message("0x10"), "");
        row("a count ends at a NUL", message(QByteArray("12\0x", 4)), "count 12");
        row("nothing before a NUL",
            message(QByteArray("\0"
                               "12",
                               3)),
            "");
        row("broken UTF-8", message("1\xff"), "");
        row("an empty message", message(""), "");
        row("words", message("hello"), "");
    }

    void decodesOneMessage()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, expected);
        LineDecoder decoder;
        QCOMPARE(eventTexts(feed(decoder, bytes)), expected);
        QCOMPARE(eventTexts(feed(decoder, message("BP5"))), QStringList(QStringLiteral("button 5 down")));
    }

    void holdsPiecesUntilTheTerminator()
    {
        LineDecoder decoder;
        for (const char *piece : {"B", "P", "7", "\n", "\r"}) {
            QVERIFY(feed(decoder, piece).isEmpty());
        }
        QCOMPARE(eventTexts(feed(decoder, "\n")), QStringList(QStringLiteral("button 7 down")));
    }

    void emptyReadChangesNothing()
    {
        LineDecoder decoder;
        QVERIFY(feed(decoder, "BP1\n\r").isEmpty());
        QVERIFY(feed(decoder, "").isEmpty());
        QCOMPARE(feed(decoder, "\n").size(), 1);
        QVERIFY(feed(decoder, "").isEmpty());
    }

    void pressAndReleaseInOneReadAreTwoEvents()
    {
        LineDecoder decoder;
        const QStringList expected = {QStringLiteral("button 1 down"), QStringLiteral("button 1 up")};
        QCOMPARE(eventTexts(feed(decoder, message("BP1") + message("BR1"))), expected);
    }

    void partialMessageBehindTheOnlyTerminatorIsLost()
    {
        LineDecoder decoder;
        QCOMPARE(eventTexts(feed(decoder, message("BP1") + "BR")),
                 QStringList(QStringLiteral("button 1 down")));
        // The rest of the release arrives alone: it reads as the number 1.
        QCOMPARE(eventTexts(feed(decoder, message("1"))), QStringList(QStringLiteral("count 1")));
    }

    void partialMessageBehindTheLastOfTwoTerminatorsIsLost()
    {
        LineDecoder decoder;
        const QStringList expected = {QStringLiteral("button 1 down"), QStringLiteral("button 2 down")};
        QCOMPARE(eventTexts(feed(decoder, message("BP1") + message("BP2") + "BR")), expected);
        QVERIFY(feed(decoder, "2").isEmpty());
    }

    void numberWithBytesBehindItsTerminatorIsDropped()
    {
        LineDecoder decoder;
        QVERIFY(feed(decoder, message("12") + "BP").isEmpty());
    }

    void terminatorsThatShareAByteCountAsTwo()
    {
        LineDecoder decoder;
        const QStringList expected = {QStringLiteral("button 1 down"), QStringLiteral("count 5")};
        QCOMPARE(eventTexts(feed(decoder, "BP1\n\r\n\r\n5")), expected);
    }

    void clearForgetsWhatIsHeld()
    {
        LineDecoder decoder;
        QVERIFY(feed(decoder, "BP1\n\r").isEmpty());
        decoder.clear();
        QVERIFY(feed(decoder, "\n").isEmpty());

        LineDecoder other;
        other.append(message("BP1") + message("BP2"));
        QVERIFY(other.next().has_value());
        other.clear();
        QVERIFY(!other.next().has_value());
    }

    void bytesThatComeWhileEventsAreTakenKeepTheirOrder()
    {
        LineDecoder decoder;
        decoder.append(message("BP1") + message("BP2"));
        QCOMPARE(eventText(*decoder.next()), QStringLiteral("button 1 down"));
        decoder.append(message("BP3") + message("BP4"));
        for (const char *expected : {"button 2 down", "button 3 down", "button 4 down"}) {
            QCOMPARE(eventText(decoder.next().value()), QLatin1String(expected));
        }
        QVERIFY(!decoder.next().has_value());
    }

    void bytesThatComeBehindTheLastEventWaitForTheirTerminator()
    {
        LineDecoder decoder;
        decoder.append(message("BP1"));
        QVERIFY(decoder.next().has_value());
        decoder.append("BR");
        QVERIFY(!decoder.next().has_value());
        decoder.append("1\n\r\n");
        QCOMPARE(eventText(decoder.next().value()), QStringLiteral("button 1 up"));
    }

    void bufferOfTheBoundIsHeldAndOneByteMoreIsDropped()
    {
        LineDecoder decoder;
        QVERIFY(feed(decoder, QByteArray(LineDecoder::maxUnterminatedBytes, ' ')).isEmpty());
        QCOMPARE(m_log->takeLines(), QStringList());
        QVERIFY(feed(decoder, "x").isEmpty());
        QCOMPARE(m_log->takeLines(), QStringList(QStringLiteral(
                                         "warning: dropped 65537 bytes without a line end from the device")));
        QCOMPARE(eventTexts(feed(decoder, message("12"))), QStringList(QStringLiteral("count 12")));
    }

    void fullBufferIsStillDecodedWhenItsTerminatorComes()
    {
        LineDecoder decoder;
        QVERIFY(feed(decoder, QByteArray(LineDecoder::maxUnterminatedBytes, ' ')).isEmpty());
        QCOMPARE(eventTexts(feed(decoder, message("8"))), QStringList(QStringLiteral("count 8")));
    }

    void logsTheWholeBufferBeforeEachLineAtDebugLevel()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("veltrix.device.debug=true"));
        LineDecoder decoder;
        feed(decoder, message("BP1") + message("BR1"));
        QLoggingCategory::setFilterRules(QString());
        const QStringList expected = {QStringLiteral(R"(debug: data: "BP1\n\r\nBR1\n\r\n")"),
                                      QStringLiteral(R"(debug: data: "BR1\n\r\n")")};
        QCOMPARE(m_log->takeLines(), expected);
    }

    void recordedStreamsGiveTheirExpectations_data() { streams(); }
    void recordedStreamsGiveTheirExpectations()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, inOneRead);
        QFETCH(QStringList, byteByByte);
        LineDecoder whole;
        QCOMPARE(eventTexts(feed(whole, bytes)), inOneRead);
        LineDecoder single;
        QVector<DeviceEvent> events;
        for (const char byte : bytes) {
            events += feed(single, QByteArray(1, byte));
        }
        QCOMPARE(eventTexts(events), byteByByte);
    }

    void recordedStreamsSplitAnywhereAgreeWithTheReference_data() { streams(); }
    void recordedStreamsSplitAnywhereAgreeWithTheReference()
    {
        QFETCH(QByteArray, bytes);
        QString difference;
        for (int first = 0; first <= bytes.size(); ++first) {
            for (int second = first; second <= bytes.size(); ++second) {
                const QVector<QByteArray> pieces = {bytes.left(first), bytes.mid(first, second - first),
                                                    bytes.mid(second)};
                QVERIFY2(
                    agreesWithReference(pieces, &difference),
                    qPrintable(
                        QStringLiteral("split at %1 and %2, %3").arg(first).arg(second).arg(difference)));
            }
        }
    }

    void randomStreamsInRandomPiecesAgreeWithTheReference_data() { addSeeds({20240607}); }
    void randomStreamsInRandomPiecesAgreeWithTheReference()
    {
        QFETCH(quint32, seed);
        const QVector<QByteArray> parts = {
            "BP", "BR", "KN", "\n\r\n", "\n\r\n", "\n\r\n", "\n\r", "\r\n",
            "\n", "1",  "-2", "9",      "D",      " ",      "\xff", QByteArray(1, '\0')};
        QRandomGenerator random(seed);
        QString difference;
        for (int round = 0; round < 5000; ++round) {
            QVector<QByteArray> pieces;
            const int count = random.bounded(1, 8);
            for (int i = 0; i < count; ++i) {
                QByteArray piece;
                for (int length = random.bounded(0, 12); length > 0; --length) {
                    piece += parts.at(random.bounded(parts.size()));
                }
                pieces.append(piece);
            }
            QVERIFY2(agreesWithReference(pieces, &difference),
                     qPrintable(QStringLiteral("round %1, %2").arg(round).arg(difference)));
        }
    }

private:
    static void streams()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("inOneRead");
        QTest::addColumn<QStringList>("byteByByte");
        const QDir folder(QStringLiteral(VELTRIX_TEST_DATA "/streams"));
        const QStringList names = folder.entryList({QStringLiteral("*.bin")}, QDir::Files, QDir::Name);
        QVERIFY(names.size() >= 7);
        for (const QString &name : names) {
            const QString base = QFileInfo(name).completeBaseName();
            const QString text = QString::fromUtf8(readFile(folder.filePath(base + QStringLiteral(".txt"))));
            const QStringList halves = text.split(QStringLiteral("[byte by byte]\n"));
            QCOMPARE(halves.size(), 2);
            QVERIFY(halves.first().startsWith(QLatin1String("[one read]\n")));
            QStringList inOneRead = halves.first().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
            inOneRead.removeFirst();
            QTest::newRow(qPrintable(base)) << readFile(folder.filePath(name)) << inOneRead
                                            << halves.last().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        }
    }

    std::unique_ptr<LogCapture> m_log;
};

QTEST_GUILESS_MAIN(TestLineDecoder)
#include "tst_LineDecoder.moc"
