#pragma once

#include <QStringList>

/// The two lists next to each other, for a test's failure message: equal lines are level, and a line that
/// only one side has is marked ("<" missing, ">" too many). Empty when the lists are equal.
QString sideBySide(const QStringList &expected, const QStringList &actual);
