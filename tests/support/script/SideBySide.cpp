#include "tests/support/script/SideBySide.h"

#include <QVector>

#include <algorithm>

namespace
{

// common[i][j]: length of the longest common subsequence of expected from i on and actual from j on
QVector<QVector<int>> commonLengths(const QStringList &expected, const QStringList &actual)
{
    QVector<QVector<int>> common(expected.size() + 1, QVector<int>(actual.size() + 1, 0));
    for (int i = expected.size() - 1; i >= 0; --i) {
        for (int j = actual.size() - 1; j >= 0; --j) {
            common[i][j] = expected.at(i) == actual.at(j) ? common[i + 1][j + 1] + 1
                                                          : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    return common;
}

} // namespace

QString sideBySide(const QStringList &expected, const QStringList &actual)
{
    if (expected == actual) {
        return QString();
    }
    int width = 24;
    for (const QString &line : expected) {
        width = std::max(width, line.size());
    }
    const auto row = [width](const QString &left, char mark, const QString &right) {
        return QStringLiteral("  %1 %2 %3\n").arg(left, -width).arg(QLatin1Char(mark)).arg(right);
    };
    QString text = QLatin1Char('\n') + row(QStringLiteral("expected"), ' ', QStringLiteral("actual"));
    const QVector<QVector<int>> common = commonLengths(expected, actual);
    int i = 0;
    int j = 0;
    while (i < expected.size() || j < actual.size()) {
        if (i < expected.size() && j < actual.size() && expected.at(i) == actual.at(j)) {
            text += row(expected.at(i), ' ', actual.at(j));
            ++i;
            ++j;
        } else if (j == actual.size() || (i < expected.size() && common[i + 1][j] >= common[i][j + 1])) {
            text += row(expected.at(i), '<', QString());
            ++i;
        } else {
            text += row(QString(), '>', actual.at(j));
            ++j;
        }
    }
    return text;
}
