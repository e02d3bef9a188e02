#pragma once

#include "mapping/ShortCut.h"

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

class ZRButtonMap;

/// A user's directories, empty at first, for one run of the program.
class ProgramHome
{
    Q_DISABLE_COPY_MOVE(ProgramHome)

public:
    ProgramHome();

    /// Lets the program that is started with @p environment live here.
    void addTo(QProcessEnvironment &environment) const;

    /// Where the virtual device is published.
    QString devicePath() const { return m_directory.filePath(QStringLiteral("device")); }

    /// Writes @p map as the current mapping.
    void writeCurrentMap(const ZRButtonMap &map) const;

    /// Writes @p maps as the library.
    void writeLibrary(const QList<const ZRButtonMap *> &maps) const;

    /// Writes the divisors of the knob's counts.
    void writeSensitivity(int normal, int shift1) const;

private:
    QTemporaryDir m_directory;
};
