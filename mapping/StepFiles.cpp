#include "mapping/StepFiles.h"

#include "mapping/FileHistory.h"
#include "mapping/MappingFile.h"

#include <QFile>

#include <optional>

namespace
{

// Nothing is there afterwards when there is no @p content.
FileResult putContent(const QString &path, const MappingChange::Content &content)
{
    FileHistory::note(path);
    if (content) {
        return MappingFile::replace(path, *content);
    }
    QFile file(path);
    return file.remove() ? FileResult::done() : FileResult::failed(file.errorString());
}

} // namespace

MappingChange::Content StepFiles::content(MappingChange::File file) const
{
    const MappingFile::ReadResult read = MappingFile::read(pathOf(file));
    return read.status == MappingFile::Status::Read ? MappingChange::Content(read.bytes) : std::nullopt;
}

FileResult StepFiles::put(const MappingChange &change, MappingChange::State *to, const Keep &keep) const
{
    if (change.file == MappingChange::File::None || change.file == MappingChange::File::Keepers) {
        return FileResult::done();
    }
    if (content(change.file) == change.contentBefore) {
        FileResult result = putContent(pathOf(change.file), change.contentAfter);
        if (result && change.file == MappingChange::File::WorkingCopy) {
            to->kept = change.after.kept;
        }
        return result;
    }
    if (change.file == MappingChange::File::Custom) {
        return FileResult::failed(QStringLiteral("it has been changed since"));
    }
    return keep(to); // what was in use was kept since, so what is in use then is kept as well
}

bool StepFiles::isOthers(const MappingChange &change) const
{
    return change.file == MappingChange::File::Custom && content(change.file) != change.contentBefore;
}

QString StepFiles::pathOf(MappingChange::File file) const
{
    return file == MappingChange::File::Custom ? m_files.custom() : m_files.workingCopy();
}
