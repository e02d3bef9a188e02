#include "tests/support/main/Main.h"
#include "tests/unit/tools/FakePort.h"
#include "tools/simulator/ScriptRunner.h"
#include "tools/simulator/VirtualDevice.h"

#include <QTest>

using simulator::ScriptRunner;

class tst_SimulatorScriptRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void eventsAreSentInOrderAtOnce();
    void aWaitEndsAtItsTime();
    void theFirstReportWaitsForTheProgram();
    void aProgramThatNeverOpensIsNotWaitedForForEver();
    void aProgramThatClosesIsNotWaitedForAgain();
    void afterPluggingAnewTheProgramIsWaitedForAgain();
    void theCableIsPulledOnlyWhenTheLastReportHasArrived();
    void aReportThatNobodyTakesDoesNotHoldTheCableForEver();
    void aPortThatCannotBeMadeEndsTheScript();
    void theDeviceShowsWhatTheScriptDoes();

private:
    void append(const QByteArray &text);

    std::unique_ptr<FakePort> m_port;
    std::unique_ptr<simulator::VirtualDevice> m_device;
    std::unique_ptr<ScriptRunner> m_runner;
};

void tst_SimulatorScriptRunner::init()
{
    m_runner.reset();
    m_device.reset();
    m_port = std::make_unique<FakePort>();
    m_device = std::make_unique<simulator::VirtualDevice>(*m_port);
    m_runner = std::make_unique<ScriptRunner>(*m_device);
}

void tst_SimulatorScriptRunner::append(const QByteArray &text)
{
    const simulator::Script script = simulator::scriptparser::parse(text);
    QVERIFY(script.mistakes.isEmpty());
    for (const simulator::ScriptStep &step : script.steps) {
        m_runner->append(step);
    }
}

void tst_SimulatorScriptRunner::eventsAreSentInOrderAtOnce()
{
    append("BP3\nKND\n-7\nraw 41\nBR3");
    QVERIFY(!m_runner->advance(0).has_value());
    QCOMPARE(m_port->take(), (QByteArrayList{"BP3", "KND", "-7", "A", "BR3"}));
    QVERIFY(m_runner->isDone());
}

void tst_SimulatorScriptRunner::aWaitEndsAtItsTime()
{
    append("BP3\nwait 100\nBR3");
    QCOMPARE(m_runner->advance(1000).value(), 1100);
    QCOMPARE(m_port->take(), QByteArrayList{"BP3"});
    QCOMPARE(m_runner->advance(1099).value(), 1100);
    QVERIFY(m_port->take().isEmpty());
    QVERIFY(!m_runner->advance(1100).has_value());
    QCOMPARE(m_port->take(), QByteArrayList{"BR3"});
}

void tst_SimulatorScriptRunner::theFirstReportWaitsForTheProgram()
{
    m_port->opened = false;
    append("BP3\nBR3");
    QCOMPARE(m_runner->advance(10).value(), 10 + ScriptRunner::openTimeout);
    QVERIFY(m_port->take().isEmpty());
    m_port->opened = true;
    QVERIFY(!m_runner->advance(200).has_value());
    QCOMPARE(m_port->take(), (QByteArrayList{"BP3", "BR3"}));
}

void tst_SimulatorScriptRunner::aProgramThatNeverOpensIsNotWaitedForForEver()
{
    m_port->opened = false;
    append("BP3");
    const qint64 end = m_runner->advance(0).value();
    QVERIFY(m_runner->advance(end - 1).has_value());
    QVERIFY(!m_runner->advance(end).has_value());
    QCOMPARE(m_port->take(), QByteArrayList{"BP3"});
}

void tst_SimulatorScriptRunner::aProgramThatClosesIsNotWaitedForAgain()
{
    append("BP3\nwait 10\nBR3");
    m_runner->advance(0);
    m_port->opened = false;
    QVERIFY(!m_runner->advance(10).has_value());
    QCOMPARE(m_port->take(), (QByteArrayList{"BP3", "BR3"}));
}

void tst_SimulatorScriptRunner::afterPluggingAnewTheProgramIsWaitedForAgain()
{
    append("BP3\nunplug\nplug\nBR3");
    m_runner->advance(0);
    m_runner->advance(ScriptRunner::deliveryPoll);
    QCOMPARE(m_port->take(), (QByteArrayList{"BP3", "(unplug)", "(plug)"}));
    m_port->opened = true;
    QVERIFY(!m_runner->advance(300).has_value());
    QCOMPARE(m_port->take(), QByteArrayList{"BR3"});
}

void tst_SimulatorScriptRunner::theCableIsPulledOnlyWhenTheLastReportHasArrived()
{
    m_port->delivered = false;
    append("BP3\nunplug");
    QCOMPARE(m_runner->advance(0).value(), ScriptRunner::deliveryPoll);
    QCOMPARE(m_runner->advance(10).value(), 10 + ScriptRunner::deliveryPoll);
    QCOMPARE(m_port->take(), QByteArrayList{"BP3"});
    m_port->delivered = true;
    QVERIFY(!m_runner->advance(20).has_value());
    QCOMPARE(m_port->take(), QByteArrayList{"(unplug)"});
}

void tst_SimulatorScriptRunner::aReportThatNobodyTakesDoesNotHoldTheCableForEver()
{
    m_port->delivered = false;
    append("BP3\nunplug");
    m_runner->advance(0);
    QVERIFY(m_runner->advance(ScriptRunner::deliveryTimeout - 1).has_value());
    QVERIFY(!m_runner->advance(ScriptRunner::deliveryTimeout).has_value());
    QVERIFY(!m_port->plugged);
}

void tst_SimulatorScriptRunner::aPortThatCannotBeMadeEndsTheScript()
{
    m_port->plugged = false;
    m_port->refusePlug = true;
    append("plug\nBP3");
    QVERIFY(!m_runner->advance(0).has_value());
    QVERIFY(m_runner->hasFailed());
    QVERIFY(m_runner->isDone());
    QCOMPARE(m_port->take(), QByteArrayList{"(plug)"});
}

void tst_SimulatorScriptRunner::theDeviceShowsWhatTheScriptDoes()
{
    append("BP3\nKND\nKNR\nKNR\nKNL");
    m_runner->advance(0);
    QVERIFY(m_device->isDown(3));
    QVERIFY(m_device->isTouched());
    QCOMPARE(m_device->knobPosition(), 1);
    append("BR3\nKNU");
    m_runner->advance(0);
    QVERIFY(!m_device->isDown(3));
    QVERIFY(!m_device->isTouched());
}

QTEST_APPLESS_MAIN(tst_SimulatorScriptRunner)
#include "tst_SimulatorScriptRunner.moc"
