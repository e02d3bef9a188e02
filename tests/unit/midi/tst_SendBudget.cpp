#include "midi/SendBudget.h"
#include "tests/support/main/Main.h"
#include "tests/support/random/Seeds.h"

#include <QRandomGenerator>
#include <QTest>

#include <limits>

class tst_SendBudget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allowsUpToTheLimitWithoutAnyCycle()
    {
        SendBudget budget(21);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(budget.allows(7, 0));
            budget.spend(7);
        }
        QVERIFY(!budget.allows(1, 0));
        QVERIFY(!budget.allows(1, 2));
    }

    void aMessageAboveTheLimitIsNeverAllowed()
    {
        SendBudget budget(21);
        QVERIFY(!budget.allows(22, 0));
        QVERIFY(!budget.allows(22, 1000));
    }

    void isWholeAgainAfterTwoRoundsOfCycles()
    {
        SendBudget budget(21);
        QVERIFY(budget.allows(21, 10));
        budget.spend(21);
        QVERIFY(!budget.allows(7, 12));
        QVERIFY(!budget.allows(7, 13)); // written after the mark at 10, perhaps just now
        QVERIFY(!budget.allows(7, 15));
        QVERIFY(budget.allows(21, 16));
    }

    void theCycleCountMayWrapAround()
    {
        const quint32 last = std::numeric_limits<quint32>::max();
        SendBudget budget(7);
        QVERIFY(budget.allows(7, last - 1));
        budget.spend(7);
        QVERIFY(!budget.allows(7, last));
        QVERIFY(!budget.allows(7, 1));
        QVERIFY(budget.allows(7, 4));
    }

    // A queue beside a server whose clients take their turns in either order within a cycle, and which stalls
    // at times.
    void theQueueNeverHoldsMoreThanTheLimit_data() { addSeeds({20240917}); }
    void theQueueNeverHoldsMoreThanTheLimit()
    {
        QFETCH(quint32, seed);
        constexpr std::size_t limit = 70;
        QRandomGenerator random(seed);
        SendBudget budget(limit);
        std::size_t queued = 0;
        std::size_t highest = 0;
        int sent = 0;
        quint32 cycles = std::numeric_limits<quint32>::max() - 1000;
        bool watchTurn = false;
        bool queueTurn = false;
        for (int step = 0; step < 1000000; ++step) {
            if ((step / 5000) % 4 != 3 && random.bounded(3) != 0) { // the server runs
                if (watchTurn && queueTurn) {
                    watchTurn = queueTurn = false; // a cycle is over when both had their turn
                }
                if (!watchTurn && (queueTurn || random.bounded(2) == 0)) {
                    watchTurn = true;
                    ++cycles;
                } else if (!queueTurn) {
                    queueTurn = true;
                    queued = 0;
                }
            }
            if (random.bounded(2) == 0 && budget.allows(7, cycles)) {
                budget.spend(7);
                queued += 7;
                ++sent;
            }
            highest = qMax(highest, queued);
            QVERIFY2(queued <= limit, qPrintable(QString::number(step)));
        }
        QVERIFY(sent > 100000);
        QVERIFY(highest > limit / 2);
    }
};

QTEST_GUILESS_MAIN(tst_SendBudget)
#include "tst_SendBudget.moc"
