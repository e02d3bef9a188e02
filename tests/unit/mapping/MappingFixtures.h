#pragma once

#include "mapping/ZRButtonMap.h"
#include "tests/support/mapping/MappingSamples.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/// The text that the writer puts into empty files.
QByteArray emptyDocument();

/// A map with every kind of entry: shortcuts, all special actions, both MIDI actions, texts that need care.
std::unique_ptr<ZRButtonMap> sampleMap(const QString &name);

/// What reading back an entry written by the writer gives.
shortCut asReadBack(const shortCut &entry);

/// The whole file, fails the program when it cannot be read.
QByteArray contentOf(const QString &path);
void writeFile(const QString &path, const QByteArray &content);

/// The maps of a list read from @p path; empty when nothing was emitted.
std::vector<std::unique_ptr<ZRButtonMap>> mapsOf(const QString &path);
