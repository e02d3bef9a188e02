// Any bytes, imported as a file from somewhere else. Either they bring all of their mappings, under names of
// their own and beside those that the user had, or nothing changes and a reason is given. What was brought
// can be exported, and the export brings the same mapping again.

#include "mapping/ImportedMappings.h"
#include "mapping/MappingExport.h"
#include "tests/fuzz/support/FuzzFolder.h"

#include <QLoggingCategory>

#include <limits>

namespace
{

using fuzz::require;

const QByteArray own("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ZR>\n <MAPPING software=\"a\"/>\n"
                     " <MAPPING software=\"a (2)\"/>\n</ZR>\n");
constexpr int ownCount = 2;
constexpr int mostExports = 2; // of an input

QStringList names(const QString &path)
{
    QStringList result;
    const ImportedMappings all(path, std::numeric_limits<int>::max());
    for (const auto &map : all.maps()) {
        result.append(map->name);
    }
    return result;
}

void checkExport(const QString &name, const MappingFiles &files)
{
    const auto map = MappingExport::find(name, files);
    require(map != nullptr, "what was imported is found");
    const QString path = fuzz::folder() + QStringLiteral("/exported.xml");
    require(bool(MappingExport::write(*map, path)), "it can be exported");
    const ImportedMappings again(path);
    require(again.fault().isEmpty() && again.maps().size() == 1, "what was exported has no fault");
    require(again.maps().front()->name == map->name, "the name comes along");
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        for (const Layer layer : Layers::all) {
            require(again.maps().front()->actions[button][layer] == map->actions[button][layer],
                    "every entry comes along");
        }
    }
    const QByteArray bytes = fuzz::content(path);
    require(bool(MappingExport::write(*again.maps().front(), path)) && fuzz::content(path) == bytes,
            "the same mapping has the same bytes");
    const QString fileName = MappingExport::fileName(name);
    require(!fileName.contains(QLatin1Char('/')) && !fileName.startsWith(QLatin1Char('.')) &&
                fileName.toUtf8().size() <= 255 && QString::fromUtf8(fileName.toUtf8()) == fileName,
            "every name gives a name of a file");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const MappingFiles files(fuzz::folder());
    const QString path = fuzz::folder() + QStringLiteral("/from elsewhere.xml");
    fuzz::write(files.custom(), own);
    fuzz::write(path, bytes);

    QFile::remove(files.programs());
    const ImportedMappings::Outcome outcome = ImportedMappings::import(path, files);
    require(!outcome.sentence.isEmpty(), "there is something to say");
    require(fuzz::content(path) == bytes, "the file from elsewhere is left alone");
    if (outcome.names.isEmpty()) {
        require(fuzz::content(files.custom()) == own, "nothing is half imported");
        return 0;
    }
    if (outcome.forPrograms) {
        require(fuzz::content(files.custom()) == own, "what acts for a program is none of the user's own");
        const ProgramsFile::Content programs = ProgramsFile::read(files.programs());
        require(programs.result && programs.entries.size() == std::size_t(outcome.names.size()),
                "every program has its mapping");
        return 0;
    }
    const QStringList now = names(files.custom());
    require(now.size() == ownCount + outcome.names.size(), "all are imported");
    require(now.mid(0, ownCount) == QStringList({QStringLiteral("a"), QStringLiteral("a (2)")}),
            "the user's own stay");
    require(now.mid(ownCount) == outcome.names, "they have the names that were said");
    require(QSet<QString>(now.begin(), now.end()).size() == now.size(), "names are told apart");
    for (const QString &name : outcome.names.mid(0, mostExports)) {
        checkExport(name, files);
    }
    return 0;
}
