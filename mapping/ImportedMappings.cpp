#include "mapping/ImportedMappings.h"

#include "mapping/FileHistory.h"
#include "mapping/ListInWords.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingElement.h"
#include "mapping/MappingFile.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"
#include "mapping/XmlMappingWriter.h"

#include <QDomDocument>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace
{

constexpr int hexadecimal = 16;
constexpr int firstNumber = 2;   // behind a taken name
constexpr int longestQuote = 30; // characters of a file's in a sentence

QString quoted(const QString &text)
{
    return text.size() <= longestQuote ? text : text.left(longestQuote) + QChar(0x2026);
}

// Goes through a document as XmlMappingReader does, and notes the first thing that it would leave out or take
// for something else.
class Walk
{
    Q_DECLARE_TR_FUNCTIONS(ImportedMappings)

public:
    Walk(std::vector<qint64> lines, std::vector<std::unique_ptr<ZRButtonMap>> *maps)
        : m_lines(std::move(lines))
        , m_maps(maps)
    {
    }

    // Depth is bounded (MappingDocument::maximumDepth).
    void document(const QDomNode &parent)
    {
        for (QDomElement child = parent.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            ++m_element;
            if (child.tagName() == QLatin1String("MAPPING")) {
                mapping(child);
            } else {
                document(child);
            }
        }
    }

    const QString &fault() const { return m_fault; }

private:
    void mapping(const QDomElement &element)
    {
        const QString name = element.attribute(QStringLiteral("software"));
        m_maps->push_back(
            std::make_unique<ZRButtonMap>(name.isEmpty() ? XmlMappingReader::nameForNone() : name));
        m_place = QString(QChar(0x201C)) + quoted(m_maps->back()->name) + QChar(0x201D);
        m_maps->back()->actions = MappingElement::readWhole(element);
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            ++m_element;
            button(child);
        }
    }

    void button(const QDomElement &element)
    {
        const QString id = element.attribute(QStringLiteral("id"));
        bool isNumber = false;
        if (!ActionTable::has(id.toInt(&isNumber)) || !isNumber) {
            report(tr("\u201c%1\u201d is no number of a control, which are 0 to 9").arg(quoted(id)));
        }
        const QString mappingsPlace = m_place;
        m_place += QStringLiteral(", ") + tr("button %1").arg(quoted(id));
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            ++m_element;
            layer(child);
        }
        m_place = mappingsPlace;
    }

    void layer(const QDomElement &element)
    {
        const auto its = Layers::fromFileName(element.tagName());
        const QString system = element.attribute(QStringLiteral("os"));
        const QString buttonsPlace = m_place;
        const bool isUsed = system.isEmpty() || system == QLatin1String("win");
        if (its) {
            m_place += QStringLiteral(", ") + Layers::shownName(*its);
        } else {
            report(tr("%1 is no layer").arg(quoted(element.tagName())));
        }
        for (QDomElement key = element.firstChildElement(); !key.isNull(); key = key.nextSiblingElement()) {
            ++m_element;
            if (isUsed) {
                checkKey(key);
            }
            skip(key);
        }
        m_place = buttonsPlace;
    }

    // Elements that mean nothing have lines too.
    void skip(const QDomElement &parent)
    {
        for (QDomElement child = parent.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            ++m_element;
            skip(child);
        }
    }

    void checkKey(const QDomElement &key)
    {
        const QString type = key.attribute(QStringLiteral("type"));
        const QString text = key.text();
        bool isNumber = true;
        if (type == QLatin1String("special")) {
            if (specialActionCode(text) == 0 && text != specialActionName(0)) {
                report(tr("\u201c%1\u201d is no action").arg(quoted(text)));
            }
            return;
        }
        if (type.contains(QLatin1String("midi"))) {
            checkMidi(key);
            return;
        }
        if (type == QLatin1String("hex") || type == QLatin1String("int")) {
            std::ignore = text.toInt(&isNumber, type == QLatin1String("hex") ? hexadecimal : 10);
        } else if (text.size() > 1) {
            report(tr("\u201c%1\u201d is no single character").arg(quoted(text)));
        }
        if (!isNumber) {
            report(tr("\u201c%1\u201d is no number").arg(quoted(text)));
        }
    }

    void checkMidi(const QDomElement &key)
    {
        if (key.attribute(QStringLiteral("channel")).isEmpty()) {
            return; // it gets numbers, whatever it says
        }
        for (const char *name : {"channel", "cc", "on_touch", "after_touch", "note", "after_touch_on",
                                 "knobcc", "m01h", "m3fh", "m0_127"}) {
            bool isNumber = false;
            const QString value = key.attribute(QLatin1String(name), QStringLiteral("0"));
            std::ignore = value.toInt(&isNumber);
            if (!isNumber) {
                report(tr("\u201c%1\u201d is no number").arg(quoted(value)));
            }
        }
    }

    void report(const QString &what)
    {
        if (m_fault.isEmpty()) {
            m_fault = tr("line %1, %2: %3").arg(QString::number(m_lines.at(m_element)), m_place, what);
        }
    }

    const std::vector<qint64> m_lines;
    std::vector<std::unique_ptr<ZRButtonMap>> *m_maps;
    std::size_t m_element = static_cast<std::size_t>(-1); // where the walk is, in document order
    QString m_place;
    QString m_fault;
};

} // namespace

ImportedMappings::ImportedMappings(const QString &path, int most)
    : m_path(path)
{
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status != MappingFile::Status::Read) {
        m_fault = file.status == MappingFile::Status::Missing ? tr("there is no such file")
                                                              : FileResult::failed(file.reason).inWords();
        return;
    }
    QDomDocument document;
    QString reason;
    std::vector<qint64> lines;
    if (MappingDocument::parse(file.bytes, &document, &reason, &lines) != MappingDocument::Outcome::Parsed) {
        m_fault = FileResult::failed(reason).inWords();
        return;
    }
    const int count = document.elementsByTagName(QStringLiteral("MAPPING")).size();
    if (count == 0 || count > most) {
        m_fault = count == 0 ? tr("it holds no mapping") : tr("it holds more than %1 mappings").arg(most);
        return;
    }
    Walk walk(std::move(lines), &m_maps);
    walk.document(document);
    m_fault = walk.fault();
    if (m_fault.isEmpty() && ProgramsFile::isOne(document) &&
        (!ProgramsFile::take(document, &m_programs) || m_programs.size() != m_maps.size())) {
        m_fault = FileResult::failed(QStringLiteral("it does not give each mapping a program of its own"))
                      .inWords();
    }
}

ImportedMappings::Outcome ImportedMappings::import(const QString &path, const MappingFiles &files)
{
    ImportedMappings file(path);
    file.chooseNames(files);
    return file.outcome(file.fault().isEmpty() ? file.addTo(files) : FileResult::failed(file.fault()));
}

QStringList ImportedMappings::chooseNames(const MappingFiles &files)
{
    if (isForPrograms()) {
        return {}; // programs are told apart by themselves
    }
    const ImportedMappings own(files.custom(), std::numeric_limits<int>::max());
    QSet<QString> taken;
    for (const auto &map : own.maps()) {
        taken.insert(map->name);
    }
    QStringList names;
    QHash<QString, int> next; // numbers to try, or equal names would count from 2 on each
    for (const auto &map : m_maps) {
        int &number = next[map->name];
        map->name = freeName(map->name, taken, &number);
        taken.insert(map->name);
        names.append(map->name);
    }
    return names;
}

FileResult ImportedMappings::addTo(const MappingFiles &files)
{
    if (isForPrograms()) {
        return addToPrograms(files.programs());
    }
    QList<const ZRButtonMap *> maps;
    for (const auto &map : m_maps) {
        maps.append(map.get());
    }
    return XmlMappingWriter(files.directory()).saveMaps(maps, MappingFiles::customName, false);
}

FileResult ImportedMappings::addToPrograms(const QString &path)
{
    ProgramsFile::Content content = ProgramsFile::read(path);
    if (!content.mayBeWritten) {
        return content.result;
    }
    for (const ProgramsFile::Entry &entry : m_programs) {
        const auto here =
            std::find_if(content.entries.begin(), content.entries.end(),
                         [&entry](const ProgramsFile::Entry &own) { return own.program == entry.program; });
        if (here == content.entries.end()) {
            content.entries.push_back(entry);
        } else if (entry.acts && !here->acts) {
            *here = entry;
            m_replaced.append(entry.title);
        } else {
            m_keepTheirs.append(entry.title);
            continue;
        }
        m_added.append(entry.title);
    }
    if (m_added.isEmpty()) {
        return FileResult::done();
    }
    // Even if a version went there a moment ago: what gives way is nowhere else.
    const FileResult noted = m_replaced.isEmpty() ? FileResult::done() : FileHistory::noteAnyway(path);
    return noted ? ProgramsFile::write(path, content.entries) : noted;
}

QString ImportedMappings::programsInWords(bool act) const
{
    const QString kept = ListInWords::names(m_keepTheirs);
    const QString added = ListInWords::names(m_added);
    QStringList sentences{
        m_keepTheirs.isEmpty()
            ? tr("Imported, each for one program: %1").arg(added)
            : tr("Imported, each for one program: %1. These keep the mappings that they have here: %2")
                  .arg(added, kept)};
    if (!m_replaced.isEmpty()) {
        sentences +=
            tr("What was switched off here is in the history: %1").arg(ListInWords::names(m_replaced));
    }
    if (!act) {
        sentences += tr("They are kept, but cannot act in this session, which does not tell which program is "
                        "in front");
    }
    return sentences.join(QStringLiteral(". "));
}

ImportedMappings::Outcome ImportedMappings::outcome(const FileResult &result, bool programsAct) const
{
    const QString file = QFileInfo(m_path).fileName();
    if (!m_fault.isEmpty()) {
        return {{}, tr("\u201c%1\u201d was not imported: %2.").arg(file, m_fault)};
    }
    if (!result) {
        const QLatin1String own = isForPrograms() ? MappingFiles::programsName : MappingFiles::customName;
        return {{},
                tr("\u201c%1\u201d was not imported. Your mappings (%2) cannot be added to: %3.")
                    .arg(file, QString(own).mid(1), result.inWords())};
    }
    if (isForPrograms()) {
        return {m_added,
                m_added.isEmpty()
                    ? tr("\u201c%1\u201d was not imported: these programs have mappings of their own "
                         "here: %2.")
                          .arg(file, ListInWords::names(m_keepTheirs))
                    : programsInWords(programsAct),
                true};
    }
    QStringList names;
    for (const auto &map : m_maps) {
        names.append(map->name);
    }
    return {names, (names.size() == 1 ? tr("\u201c%1\u201d was imported.") : tr("Imported: %1"))
                       .arg(ListInWords::names(names))};
}

QString ImportedMappings::freeName(const QString &name, const QSet<QString> &taken, int *number)
{
    QString free = name;
    for (*number = std::max(*number, firstNumber); taken.contains(free); ++*number) {
        free = QStringLiteral("%1 (%2)").arg(name, QString::number(*number));
    }
    return free;
}
