#pragma once

#include "mapping/FileResult.h"
#include "mapping/MappingFiles.h"
#include "mapping/MappingSteps.h"

#include <QString>

#include <functional>

/// The files that steps write, the user's mappings and the working copy, and the way of each from what it
/// held at one end of a step to what it held at the other.
class StepFiles
{
public:
    /// Writes what @p now has in use to the working copy, and notes there what of it is kept.
    using Keep = std::function<FileResult(MappingChange::State *now)>;

    /// Touches none of @p files, which are to live longer.
    explicit StepFiles(const MappingFiles &files)
        : m_files(files)
    {
    }

    /// What @p file, one of the two, holds; nothing when it is not there or cannot be read.
    MappingChange::Content content(MappingChange::File file) const;

    /// Leads the file of @p change, if it is one of the two, from what it held before to what it held after,
    /// byte for byte. @p to is what is to be in use then; what of it is kept is noted there. A working copy
    /// that has been written since is left to @p keep. A failure, which leaves the file as it is, when it
    /// cannot be written, and when isOthers().
    FileResult put(const MappingChange &change, MappingChange::State *to, const Keep &keep) const;

    /// Whether @p change wrote the user's mappings and somebody else has since, so that it can never be put.
    bool isOthers(const MappingChange &change) const;

private:
    QString pathOf(MappingChange::File file) const;

    const MappingFiles &m_files;
};
