#pragma once

#include "mapping/FileResult.h"

#include <QString>

/// Keeps the last library of mappings that could be read beside the library file.
///
/// The library is replaced by a download that may break off, or that may turn out to be something else
/// entirely. What is kept takes its place at the next start then, or what came with the program. Every file
/// is replaced as a whole.
namespace LibraryKeeper
{

enum class Outcome {
    Usable,  ///< the library is a mapping file; nothing was done
    Missing, ///< there is no library; nothing was done
    PutBack, ///< it was not a mapping file; the kept one, or else the seed, has taken its place
    Lost,    ///< it is not a mapping file, and there is none to take its place
};

/// The file in which @p library is kept.
QString keptFile(const QString &library);

/// Looks after the file @p library, at start, before it is read. A mapping file parses and holds at least one
/// mapping. @p seed is the library that came with the program; empty if none did. What takes a library's
/// place can be written by its owner. Anything but Usable and Missing leaves a line in the log.
Outcome restore(const QString &library, const QString &seed = QString());

/// Keeps @p library, which has just been read and held @p mappings mappings; one without any is not kept.
/// A failure leaves a line in the log.
FileResult keep(const QString &library, int mappings);

} // namespace LibraryKeeper
