#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// All that a file holds; what no file of the tests holds where there is none.
inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}
