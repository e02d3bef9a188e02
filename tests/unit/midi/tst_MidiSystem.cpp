#include "midi/MidiSystem.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/midi/FakeMidiBackend.h"

#include <QTest>

class tst_MidiSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_first = std::make_shared<FakeMidi>();
        m_second = std::make_shared<FakeMidi>();
        m_firstThrows = false;
        m_log = std::make_unique<LogCapture>();
    }

    void cleanup() { m_log.reset(); }

    void theDefaultSystemIsTakenWhenItHasPorts()
    {
        m_first->ports = {"a"};
        m_second->ports = {"b"};
        const auto backend = choose();
        QCOMPARE(backend->portName(0), std::string("a"));
        QCOMPARE(m_opened, QStringList(QStringLiteral("first")));
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("MIDI output goes through first")));
    }

    void theNextOneIsTakenWhenTheDefaultCannotBeMade()
    {
        m_firstThrows = true;
        m_second->ports = {"b"};
        const auto backend = choose();
        QCOMPARE(backend->portName(0), std::string("b"));
        QCOMPARE(m_log->lines(), QStringList({QStringLiteral("first: no such device"),
                                              QStringLiteral("MIDI output goes through second")}));
    }

    void theNextOneIsTakenWhenTheDefaultIsNotThere()
    {
        m_first.reset();
        m_second->ports = {"b"};
        QCOMPARE(choose()->portName(0), std::string("b"));
    }

    void theNextOneIsTakenWhenTheDefaultHasNoPorts()
    {
        m_second->ports = {"b"};
        const auto backend = choose();
        QCOMPARE(backend->portName(0), std::string("b"));
        QCOMPARE(m_first->destroyed, 1);
    }

    void theDefaultStaysWhenNoSystemHasPorts()
    {
        const auto backend = choose();
        QVERIFY(backend != nullptr);
        QCOMPARE(m_first->destroyed, 0);
        QCOMPARE(m_second->destroyed, 1);
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("MIDI output goes through first")));
    }

    void aSystemThatFailsToListItsPortsIsClosed()
    {
        m_first->fail["portCount"] = {1, 100};
        m_second->ports = {"b"};
        QCOMPARE(choose()->portName(0), std::string("b"));
        QCOMPARE(m_first->destroyed, 1);
    }

    void withoutAnySystemThatIsSaidOnce()
    {
        m_first.reset();
        m_second.reset();
        QVERIFY(choose() == nullptr);
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("MIDI output is off: no MIDI system works")));
    }

    void allAreAbsentOnlyWhenThatIsCertainOfEach()
    {
        const auto areAbsent = [](const std::vector<MidiSystem> &systems) {
            bool absent = false;
            openFirstWorking(QStringLiteral("MIDI output"), systems, &absent);
            return absent;
        };
        const MidiSystem none{QStringLiteral("none"),
                              []() -> std::unique_ptr<MidiBackend> { throw MidiSystemAbsent("not there"); }};
        const MidiSystem silent{QStringLiteral("silent"), [] { return std::unique_ptr<MidiBackend>(); }};
        const MidiSystem broken{QStringLiteral("broken"), []() -> std::unique_ptr<MidiBackend> {
                                    throw std::runtime_error("no answer");
                                }};
        const MidiSystem there{QStringLiteral("there"), [this]() -> std::unique_ptr<MidiBackend> {
                                   return std::make_unique<FakeMidiBackend>(m_first);
                               }};
        QVERIFY(areAbsent({}));
        QVERIFY(areAbsent({none, none}));
        for (const MidiSystem &other : {silent, broken, there}) {
            QVERIFY2(!areAbsent({none, other}), qPrintable(other.name));
            QVERIFY2(!areAbsent({other, none}), qPrintable(other.name));
        }
    }

private:
    std::unique_ptr<MidiBackend> choose()
    {
        m_opened.clear();
        return openFirstWorking(QStringLiteral("MIDI output"),
                                {{QStringLiteral("first"),
                                  [this]() -> std::unique_ptr<MidiBackend> {
                                      m_opened.append(QStringLiteral("first"));
                                      if (m_firstThrows) {
                                          throw std::runtime_error("no such device");
                                      }
                                      return m_first ? std::make_unique<FakeMidiBackend>(m_first) : nullptr;
                                  }},
                                 {QStringLiteral("second"), [this]() -> std::unique_ptr<MidiBackend> {
                                      m_opened.append(QStringLiteral("second"));
                                      return m_second ? std::make_unique<FakeMidiBackend>(m_second) : nullptr;
                                  }}});
    }

    std::shared_ptr<FakeMidi> m_first;
    std::shared_ptr<FakeMidi> m_second;
    bool m_firstThrows = false;
    QStringList m_opened;
    std::unique_ptr<LogCapture> m_log;
};

QTEST_GUILESS_MAIN(tst_MidiSystem)
#include "tst_MidiSystem.moc"
