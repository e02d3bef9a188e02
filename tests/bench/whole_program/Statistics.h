#pragma once

#include <QString>

#include <vector>

/// Times of one kind, in ns.
class Statistics
{
public:
    void add(double value) { m_values.push_back(value); }
    std::size_t count() const { return m_values.size(); }

    /// The value that @p part (0 to 1) of all values do not exceed. There must be one.
    double quantile(double part) const;

private:
    std::vector<double> m_values;
};

/// A figure beside its target, as a line of the report. Counts the missed ones.
class Report
{
public:
    /// "at most" targets, 0 for none; @p unit is for both.
    void line(const QString &what, double value, double target, const QString &unit,
              const QString &details = QString());
    void note(const QString &text) const;
    int missed() const { return m_missed; }

private:
    int m_missed = 0;
};
