#include "mapping/VersionRestore.h"

#include "mapping/FileHistory.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/ProgramsFile.h"

#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace
{

// With @p bytes as the content of @p file. Empty when nothing is.
QString whatIsWrong(const QByteArray &bytes, const QString &file, const MappingFiles &files)
{
    QDomDocument document;
    QString reason;
    if (MappingDocument::parse(bytes, &document, &reason) != MappingDocument::Outcome::Parsed) {
        return reason;
    }
    if (document.documentElement().tagName() != QLatin1String("ZR")) {
        QXmlStreamReader reader(bytes);
        reader.readNextStartElement();
        return QStringLiteral("line %1: <%2> is no mapping file's (column %3)")
            .arg(QString::number(reader.lineNumber()), document.documentElement().tagName().left(40),
                 QString::number(reader.columnNumber()));
    }
    const bool empty = document.elementsByTagName(QStringLiteral("MAPPING")).isEmpty();
    if (file == files.workingCopy() && empty) {
        return QStringLiteral("it holds no mapping");
    }
    std::vector<ProgramsFile::Entry> entries;
    return file == files.programs() && !ProgramsFile::take(document, &entries)
               ? QStringLiteral("it does not give each mapping a program of its own")
               : QString();
}

} // namespace

QString VersionRestore::fileOf(const QString &version, const MappingFiles &files)
{
    for (const QString &file : {files.custom(), files.workingCopy(), files.programs()}) {
        if (FileHistory::isOf(version, file)) {
            return file;
        }
    }
    return {};
}

QString VersionRestore::find(const QString &named, const MappingFiles &files)
{
    const QDir history(FileHistory::folder(files.custom()));
    return QFileInfo::exists(named) || !history.exists(named) ? named : history.filePath(named);
}

VersionRestore::Content VersionRestore::read(const QString &version, const MappingFiles &files)
{
    const QString file = fileOf(version, files);
    const auto refused = [](const QString &reason) { return Content{FileResult::failed(reason), {}, {}}; };
    if (file.isEmpty()) {
        return refused(
            QStringLiteral("by its name it is no version of custom.xml, current.xml or programs.xml"));
    }
    const MappingFile::ReadResult read = MappingFile::read(version);
    if (read.status != MappingFile::Status::Read) {
        return refused(read.status == MappingFile::Status::Missing ? QStringLiteral("there is none")
                                                                   : read.reason);
    }
    const QString fault = whatIsWrong(read.bytes, file, files);
    return fault.isEmpty() ? Content{FileResult::done(), file, read.bytes} : refused(fault);
}

FileResult VersionRestore::put(const Content &content)
{
    const FileResult noted = FileHistory::noteAnyway(content.file);
    return noted ? MappingFile::replace(content.file, content.bytes) : noted;
}

FileResult VersionRestore::restore(const QString &version, const MappingFiles &files)
{
    const Content content = read(version, files);
    return content.result ? put(content) : content.result;
}
