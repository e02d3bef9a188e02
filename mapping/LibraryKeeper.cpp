#include "mapping/LibraryKeeper.h"

#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"

#include <QDomDocument>

namespace
{

// An empty text if @p file is a mapping file, otherwise what is wrong with it.
QString whatIsWrong(const MappingFile::ReadResult &file)
{
    if (file.status == MappingFile::Status::Missing) {
        return QStringLiteral("there is none");
    }
    if (file.status == MappingFile::Status::Refused) {
        return file.reason;
    }
    QDomDocument document;
    QString reason;
    if (MappingDocument::parse(file.bytes, &document, &reason) != MappingDocument::Outcome::Parsed) {
        return reason;
    }
    // A page that a server sends instead of the library may be well-formed, too.
    const bool empty = document.elementsByTagName(QStringLiteral("MAPPING")).isEmpty();
    return empty ? QStringLiteral("it holds no mapping") : QString();
}

bool same(const MappingFile::ReadResult &one, const MappingFile::ReadResult &other)
{
    return one.status == MappingFile::Status::Read && other.status == MappingFile::Status::Read &&
           one.bytes == other.bytes;
}

FileResult put(const MappingFile::ReadResult &file, const QString &library)
{
    const QString fault = whatIsWrong(file);
    if (!fault.isEmpty()) {
        return FileResult::failed(fault);
    }
    MappingFile::makeWritable(library); // or it is no file that could be replaced, which says why
    return MappingFile::replace(library, file.bytes);
}

} // namespace

QString LibraryKeeper::keptFile(const QString &library)
{
    return library + QStringLiteral(".kept");
}

LibraryKeeper::Outcome LibraryKeeper::restore(const QString &library, const QString &seed)
{
    const MappingFile::ReadResult current = MappingFile::read(library);
    if (current.status == MappingFile::Status::Missing) {
        return Outcome::Missing;
    }
    const MappingFile::ReadResult kept = MappingFile::read(keptFile(library));
    if (same(current, kept)) {
        return Outcome::Usable; // by far the most frequent case costs no parse
    }
    const QString fault = whatIsWrong(current);
    if (fault.isEmpty()) {
        return Outcome::Usable;
    }
    qCWarning(lcMapping).noquote() << "The library" << library << "is not a mapping file:" << fault;
    const FileResult putBack = put(kept, library);
    if (putBack) {
        qCWarning(lcMapping).noquote() << "The last library that was read has been put back";
        return Outcome::PutBack;
    }
    qCWarning(lcMapping).noquote() << "The last library that was read could not be put back:"
                                   << putBack.reason();
    if (seed.isEmpty()) {
        return Outcome::Lost;
    }
    const FileResult seeded = put(MappingFile::read(seed), library);
    if (seeded) {
        qCWarning(lcMapping).noquote() << "The library that came with the program has taken its place";
        return Outcome::PutBack;
    }
    qCWarning(lcMapping).noquote() << "The library that came with the program could not take its place:"
                                   << seeded.reason();
    return Outcome::Lost;
}

FileResult LibraryKeeper::keep(const QString &library, int mappings)
{
    const MappingFile::ReadResult current = MappingFile::read(library);
    if (mappings <= 0 || same(current, MappingFile::read(keptFile(library)))) {
        return FileResult::done();
    }
    FileResult result = current.status == MappingFile::Status::Read
                            ? MappingFile::replace(keptFile(library), current.bytes)
                            : FileResult::failed(current.reason);
    if (!result) {
        qCWarning(lcMapping).noquote() << "The library" << library << "could not be kept:" << result.reason();
    }
    return result;
}
