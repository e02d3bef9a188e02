#include "mapping/ProgramsFile.h"

#include "mapping/BrokenFile.h"
#include "mapping/FileHistory.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingElement.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"

#include <QDomDocument>

#include <algorithm>

namespace
{

const QLatin1String rootName("ZR");
const QLatin1String programAttribute("program");
const QLatin1String titleAttribute("title");
const QLatin1String offAttribute("off");

} // namespace

bool ProgramsFile::isOne(const QDomDocument &document)
{
    const QDomNodeList mappings = document.elementsByTagName(MappingElement::tagName);
    for (int i = 0; i < mappings.size(); ++i) {
        if (mappings.at(i).toElement().hasAttribute(programAttribute)) {
            return true;
        }
    }
    return false;
}

bool ProgramsFile::add(const Entry &entry, std::vector<Entry> *entries)
{
    const bool isUsable = !entry.program.isEmpty() &&
                          std::none_of(entries->begin(), entries->end(), [&entry](const Entry &other) {
                              return other.program == entry.program;
                          });
    if (isUsable) {
        entries->push_back(entry);
    }
    return isUsable;
}

bool ProgramsFile::take(const QDomDocument &document, std::vector<Entry> *entries)
{
    const QDomElement root = document.firstChildElement(rootName);
    bool whole = !root.isNull();
    for (QDomElement mapping = root.firstChildElement(MappingElement::tagName); !mapping.isNull();
         mapping = mapping.nextSiblingElement(MappingElement::tagName)) {
        const QString program = mapping.attribute(programAttribute);
        const Entry entry{
            program, mapping.attribute(titleAttribute, program), mapping.attribute(offAttribute).isEmpty(),
            mapping.attribute(MappingElement::nameAttribute), MappingElement::readWhole(mapping)};
        whole = add(entry, entries) && whole;
    }
    return whole;
}

ProgramsFile::Content ProgramsFile::read(const QString &path)
{
    Content content;
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status == MappingFile::Status::Missing) {
        return content;
    }
    QDomDocument document;
    QString reason = file.reason;
    if (file.status == MappingFile::Status::Read &&
        MappingDocument::parse(file.bytes, &document, &reason) == MappingDocument::Outcome::Parsed &&
        take(document, &content.entries)) {
        return content;
    }
    qCWarning(lcMapping).noquote() << "The file" << path << "was not read as a whole:" << reason;
    const FileResult copied = file.status == MappingFile::Status::Read
                                  ? BrokenFile::copyAside(path, file.bytes)
                                  : FileResult::failed(reason);
    content.mayBeWritten = bool(copied);
    content.result = FileResult::failed(
        copied ? QStringLiteral("it is no mapping file; a copy of it lies beside it") : copied.reason());
    return content;
}

FileResult ProgramsFile::write(const QString &path, const std::vector<Entry> &entries)
{
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction(
        QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"")));
    QDomElement root = document.createElement(rootName);
    for (const Entry &entry : entries) {
        QDomElement mapping = MappingElement::write(&document, entry.name, entry.actions);
        MappingDocument::setText(&mapping, programAttribute, entry.program);
        MappingDocument::setText(&mapping, titleAttribute, entry.title);
        if (!entry.acts) {
            mapping.setAttribute(offAttribute, QStringLiteral("yes"));
        }
        root.appendChild(mapping);
    }
    document.appendChild(root);
    FileHistory::note(path); // without which a change is kept all the same
    FileResult result = MappingFile::replace(path, MappingDocument::serialize(&document));
    if (!result) {
        qCWarning(lcMapping).noquote() << "The file" << path << "was left as it is:" << result.reason();
    }
    return result;
}
