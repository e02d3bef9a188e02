#pragma once

#include <QString>
#include <QVector>

/// What a file of translations says, as the translator wrote it.
struct Translation {
    QString context;
    QString source;
    QString text;
};

/// All of the file for @p language ("de"). Fails the test, and is empty, when it cannot be read.
QVector<Translation> readTranslations(const QString &language);
