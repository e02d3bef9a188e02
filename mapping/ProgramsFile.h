#pragma once

#include "mapping/ActionTable.h"
#include "mapping/FileResult.h"

#include <QString>

#include <vector>

class QDomDocument;

/// The file of the mappings that act for one program each.
///
/// It has the form of the other mapping files, but that each mapping says whose it is, and that the knob's
/// fields are read back. Read and written whole, like those: see MappingFile.
namespace ProgramsFile
{

struct Entry {
    QString program;  ///< what programs are told apart by; never empty, and no two entries have the same
    QString title;    ///< the program, as the user knows it
    bool acts = true; ///< false: the user has switched it off, and may want it back
    QString name;     ///< the mapping's; may be empty
    ActionTable actions;
};

struct Content {
    std::vector<Entry> entries;
    FileResult result = FileResult::done();
    /// Whether the file may be written: false when what is there could neither be read nor set aside.
    bool mayBeWritten = true;
};

/// A file that is missing holds nothing. One that is no mapping file, or that holds mappings that cannot be
/// told apart, is left beside itself as a copy (BrokenFile); what can be used of it is.
Content read(const QString &path);

/// What the file held before goes to its history (FileHistory).
FileResult write(const QString &path, const std::vector<Entry> &entries);

/// Whether any mapping of @p document says whose it is, as only those of such a file do.
bool isOne(const QDomDocument &document);

/// Appends what @p document holds to @p entries. False when something had to be left out, since it cannot be
/// told whose it is.
bool take(const QDomDocument &document, std::vector<Entry> *entries);

/// Appends @p entry to @p entries, unless its program has one there, or it has none.
bool add(const Entry &entry, std::vector<Entry> *entries);

} // namespace ProgramsFile
