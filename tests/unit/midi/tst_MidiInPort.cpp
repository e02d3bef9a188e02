#include "midi/MidiInPort.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/midi/FakeMidiBackend.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <thread>

class tst_MidiInPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_midi = std::make_shared<FakeMidi>();
        m_midi->ports = {"keys:out"};
    }

    void aNoteOnArrivesAsThreeDecimalTexts()
    {
        MidiInPort port(backend());
        QSignalSpy spy(&port, &MidiInPort::gotMessage);
        m_midi->callback({0x90, 0x3C, 0x64});
        QCOMPARE(spy.size(), 1);
        QCOMPARE(texts(spy.first()),
                 QStringList({QStringLiteral("144"), QStringLiteral("60"), QStringLiteral("100")}));
    }

    void bytesThatAShortMessageLacksAreEmptyTexts_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("expected");
        const QString none;
        QTest::newRow("real time") << QByteArray("\xFA") << QStringList({QStringLiteral("250"), none, none});
        QTest::newRow("program change")
            << QByteArray("\xC1\x05") << QStringList({QStringLiteral("193"), QStringLiteral("5"), none});
        QTest::newRow("nothing") << QByteArray() << QStringList({none, none, none});
        QTest::newRow("longer than three")
            << QByteArray("\xF0\x01\x02\xF7", 4)
            << QStringList({QStringLiteral("240"), QStringLiteral("1"), QStringLiteral("2")});
    }

    void bytesThatAShortMessageLacksAreEmptyTexts()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, expected);
        MidiInPort port(backend());
        QSignalSpy spy(&port, &MidiInPort::gotMessage);
        m_midi->callback(std::vector<unsigned char>(bytes.begin(), bytes.end()));
        QCOMPARE(spy.size(), 1);
        QCOMPARE(texts(spy.first()), expected);
    }

    void aReceiverOfAnotherThreadGetsTheMessageQueued()
    {
        MidiInPort port(backend());
        QStringList got;
        connect(&port, &MidiInPort::gotMessage, this,
                [&](const QString &byte0, const QString &byte1, const QString &byte2) {
                    QCOMPARE(QThread::currentThread(), thread());
                    got = QStringList({byte0, byte1, byte2});
                });
        std::thread([this] { m_midi->callback({0x80, 0, 127}); }).join();
        QCOMPARE(got, QStringList());
        QCoreApplication::processEvents();
        QCOMPARE(got, QStringList({QStringLiteral("128"), QStringLiteral("0"), QStringLiteral("127")}));
    }

    void aMessageThatComesTooLateFindsNoPort()
    {
        {
            MidiInPort port(backend());
        }
        QCOMPARE(m_midi->destroyed, 1);
        m_midi->callback({0x90, 0x3C, 0x64}); // as a driver's thread that could not be stopped would
    }

    void mayBeDestroyedWhileMessagesArrive()
    {
        for (int round = 0; round < 50; ++round) {
            auto port = std::make_unique<MidiInPort>(backend());
            std::atomic<int> got{0};
            connect(
                port.get(), &MidiInPort::gotMessage, port.get(), [&] { ++got; }, Qt::DirectConnection);
            std::atomic<bool> stop{false};
            std::thread driver([callback = m_midi->callback, &stop] {
                while (!stop) {
                    callback({0x90, 0x3C, 0x64});
                }
            });
            while (got < 10) {
                std::this_thread::yield();
            }
            port.reset();
            const int atTheEnd = got;
            stop = true;
            driver.join();
            QCOMPARE(got.load(), atTheEnd);
        }
    }

    void worksWithoutAMidiSystem()
    {
        const LogCapture log;
        MidiInPort port(std::unique_ptr<MidiBackend>{});
        QCOMPARE(port.portNames(), QStringList());
        QVERIFY(port.openPort(0) != 0);
        QCOMPARE(log.lines().size(), 1);
    }

    void anErrorWhileInstallingTheCallbackIsLogged()
    {
        m_midi->fail["setCallback"] = {1, 1};
        const LogCapture log;
        MidiInPort port(backend());
        QCOMPARE(log.lines(), QStringList(QStringLiteral("setCallback failed")));
    }

private:
    std::unique_ptr<MidiBackend> backend() { return std::make_unique<FakeMidiBackend>(m_midi); }

    static QStringList texts(const QList<QVariant> &arguments)
    {
        QStringList result;
        for (const QVariant &argument : arguments) {
            result.append(argument.toString());
        }
        return result;
    }

    std::shared_ptr<FakeMidi> m_midi;
};

QTEST_GUILESS_MAIN(tst_MidiInPort)
#include "tst_MidiInPort.moc"
