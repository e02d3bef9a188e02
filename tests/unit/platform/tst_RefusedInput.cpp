#include "engine/platform/RefusedInput.h"
#include "tests/support/main/Main.h"

#include <QSignalSpy>
#include <QTest>

class tst_RefusedInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsTakenIsNoNews();
    void theFirstRefusalIsToldOnceInTheLogAndToTheWatcher();
    void nobodyIsToldAfterTheWatcherHasGone();
};

namespace
{

const char warning[] =
    "the system refused an event: the window in front may have more rights than the program";

} // namespace

void tst_RefusedInput::whatIsTakenIsNoNews()
{
    RefusedInput refused;
    int told = 0;
    const auto watcher = refused.watch([&told] { ++told; });
    for (int i = 0; i < 3; ++i) {
        refused.note(true);
    }
    QCoreApplication::processEvents();
    QCOMPARE(told, 0);
}

void tst_RefusedInput::theFirstRefusalIsToldOnceInTheLogAndToTheWatcher()
{
    RefusedInput refused;
    int told = 0;
    const auto watcher = refused.watch([&told] { ++told; });
    const QSignalSpy first(&refused, &RefusedInput::firstRefused);
    QTest::ignoreMessage(QtWarningMsg, warning);
    refused.note(true);
    refused.note(false);
    QCOMPARE(told, 0); // not while the event is on its way
    refused.note(false);
    refused.note(true);
    QCoreApplication::processEvents();
    QCOMPARE(told, 1);
    QCOMPARE(first.size(), 1);
}

void tst_RefusedInput::nobodyIsToldAfterTheWatcherHasGone()
{
    RefusedInput refused;
    int told = 0;
    refused.watch([&told] { ++told; }).reset();
    QTest::ignoreMessage(QtWarningMsg, warning);
    refused.note(false);
    QCoreApplication::processEvents();
    QCOMPARE(told, 0);
}

QTEST_GUILESS_MAIN(tst_RefusedInput)
#include "tst_RefusedInput.moc"
