#include "tests/bench/whole_program/Statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

double Statistics::quantile(double part) const
{
    std::vector<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const auto rank = static_cast<std::size_t>(std::ceil(part * static_cast<double>(sorted.size())));
    return sorted.at(std::max<std::size_t>(rank, 1) - 1);
}

void Report::line(const QString &what, double value, double target, const QString &unit,
                  const QString &details)
{
    QString verdict;
    if (target > 0) {
        const bool met = value <= target;
        m_missed += met ? 0 : 1;
        verdict = QStringLiteral("(target at most %1%2) %3")
                      .arg(target)
                      .arg(unit, met ? QStringLiteral("met") : QStringLiteral("MISSED"));
    }
    const QString text =
        QStringLiteral("%1 %2%3  %4  %5\n").arg(what, -57).arg(value, 7, 'f', 2).arg(unit, verdict, details);
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

void Report::note(const QString &text) const
{
    std::fputs((text + QLatin1Char('\n')).toUtf8().constData(), stdout);
    std::fflush(stdout);
}
