#include "tests/support/main/Main.h"
#include "tests/unit/device/LinkFixture.h"

/// The queue of requests to the device.
class TestSerialProtocolRequests : public LinkTest::Fixture
{
    Q_OBJECT

private Q_SLOTS:
    void requestIsWrittenAsItStandsFlushedAndLogged()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("veltrix.device.debug=true"));
        plug();
        SerialProtocol::queueRequest(QByteArray("AB\xfe\x80rest", 8));
        Q_EMIT m_link->becomesAvailable2Request();
        QCOMPARE(m_bench.calls,
                 QStringList({QStringLiteral("write 4142fe8072657374"), QStringLiteral("flush")}));
        QCOMPARE(m_log->takeLines(),
                 QStringList(QStringLiteral("debug: Send request - AB number:-2 type:-128")));
    }

    void onlyOneRequestGoesOutPerPlug()
    {
        plug();
        SerialProtocol::queueRequest("AB12");
        SerialProtocol::queueRequest("CD34");
        m_link->processNextRequest();
        m_link->processNextRequest(); // taken off the queue and dropped
        QCOMPARE(m_bench.calls, QStringList({QStringLiteral("write 41423132"), QStringLiteral("flush")}));
        m_bench.calls.clear();
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls, QStringList());
    }

    void oldestRequestGoesFirst()
    {
        plug();
        SerialProtocol::queueRequest("AB12");
        SerialProtocol::queueRequest("CD34");
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls.first(), QStringLiteral("write 41423132"));
        m_link->processNextRequest();
    }

    void pluggingEmptiesTheQueueAndMakesReadyAgain()
    {
        plug();
        SerialProtocol::queueRequest("AB12");
        m_link->processNextRequest();
        SerialProtocol::queueRequest("CD34");
        unplugByList();
        plug();
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls, QStringList());
        SerialProtocol::queueRequest("EF56");
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls, QStringList({QStringLiteral("write 45463536"), QStringLiteral("flush")}));
    }

    void requestWithoutAnOpenPortIsDropped()
    {
        plug();
        unplugByList();
        SerialProtocol::queueRequest("AB12");
        m_link->processNextRequest();
        plug();
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls, QStringList());
    }

    void requestToALostPortIsDropped()
    {
        plug();
        m_bench.current->fail(SerialPort::Error::Read);
        QCoreApplication::sendPostedEvents(m_link.get());
        m_bench.calls.clear();
        SerialProtocol::queueRequest("AB12");
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls, QStringList());
        m_log->takeLines();
    }

    void tooShortRequestIsDroppedWithAWarning()
    {
        plug();
        SerialProtocol::queueRequest("AB1");
        SerialProtocol::queueRequest("AB12");
        m_link->processNextRequest();
        QCOMPARE(m_log->takeLines(), QStringList(QStringLiteral("warning: dropped a request of 3 bytes")));
        QCOMPARE(m_bench.calls, QStringList());
        m_link->processNextRequest();
        QCOMPARE(m_bench.calls.first(), QStringLiteral("write 41423132"));
    }

    void emptyQueueSendsNothing()
    {
        plug();
        Q_EMIT m_link->becomesAvailable2Request();
        QCOMPARE(m_bench.calls, QStringList());
    }
};

QTEST_GUILESS_MAIN(TestSerialProtocolRequests)
#include "tst_SerialProtocolRequests.moc"
