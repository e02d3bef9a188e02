#pragma once

#include <QRandomGenerator>
#include <QTest>

#include <initializer_list>

/// The rows of a random test: a column "seed" with the numbers that run every time and two that nobody has
/// seen. Each row has its number in its name, so that a failure tells it; one that ever failed joins @p
/// known. VELTRIX_SEED=n in the environment runs that one alone.
inline void addSeeds(std::initializer_list<quint32> known)
{
    QTest::addColumn<quint32>("seed");
    if (qEnvironmentVariableIsSet("VELTRIX_SEED")) {
        const quint32 seed = qEnvironmentVariable("VELTRIX_SEED").toUInt();
        QTest::addRow("VELTRIX_SEED=%u", seed) << seed;
        return;
    }
    for (const quint32 seed : known) {
        QTest::addRow("VELTRIX_SEED=%u", seed) << seed;
    }
    for (int count = 0; count < 2; ++count) {
        const quint32 seed = QRandomGenerator::system()->generate();
        QTest::addRow("VELTRIX_SEED=%u (new)", seed) << seed;
    }
}
