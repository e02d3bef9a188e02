// Any bytes, read as a list and as a single map, saved into and removed from. Nothing may crash, nothing that
// could be read may become unreadable, and what the writer writes is read back equal.

#include "mapping/MappingDocument.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"
#include "mapping/XmlMappingWriter.h"
#include "tests/fuzz/support/FuzzFolder.h"

#include <QDomDocument>
#include <QLoggingCategory>

#include <memory>
#include <vector>

namespace
{

using Maps = std::vector<std::unique_ptr<ZRButtonMap>>;

using fuzz::folder;
using fuzz::require;

QString custom()
{
    return folder() + QStringLiteral("/custom.xml");
}

// Whether a list was announced at all, and its maps.
bool readList(const QString &path, Maps *maps)
{
    bool announced = false;
    maps->clear();
    XmlMappingReader reader;
    QObject::connect(&reader, &XmlMappingReader::newMapListReady, &reader,
                     [&](const QList<ZRButtonMap *> &list, bool, int defaultMap) {
                         announced = true;
                         for (ZRButtonMap *map : list) {
                             maps->emplace_back(map);
                         }
                         require(defaultMap >= 0 && (list.isEmpty() || defaultMap < list.size()),
                                 "the default is in the list");
                     });
    reader.readMapList(path, true);
    return announced;
}

std::unique_ptr<ZRButtonMap> readCurrent(const QString &path)
{
    std::unique_ptr<ZRButtonMap> current;
    XmlMappingReader reader;
    QObject::connect(&reader, &XmlMappingReader::onCurrentMapLoaded, &reader,
                     [&current](ZRButtonMap *map) { current.reset(map); });
    reader.readCurrentMap(path);
    return current;
}

shortCut asReadBack(shortCut entry)
{
    entry.label = MappingDocument::carriable(entry.label);
    if (isMidi(entry)) {
        entry.key2 = -1;
        entry.key3 = -1;
        return entry;
    }
    if (actionKind(entry) == ActionKind::Special) {
        // A file names a special action, and a code without a name is "empty".
        entry.key2 = specialActionCode(specialActionName(entry.key2));
        entry.key3 = -1;
    }
    // Only MIDI entries carry MIDI values in a file.
    const shortCut none;
    entry.channel = none.channel;
    entry.cc = none.cc;
    entry.v_on = none.v_on;
    entry.v_off = none.v_off;
    entry.note = none.note;
    entry.v_off_enable = none.v_off_enable;
    return entry;
}

void requireEqual(const ZRButtonMap &read, const ZRButtonMap &written)
{
    const QString name = MappingDocument::carriable(written.name);
    require(read.name == (name.isEmpty() ? QStringLiteral("Unknown") : name), "the name is read back");
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        for (const Layer layer : Layers::all) {
            require(read.actions[button][layer] == asReadBack(written.actions[button][layer]),
                    "an entry is read back");
        }
    }
}

void checkDepth(const QByteArray &bytes)
{
    QDomDocument document;
    QString reason;
    if (MappingDocument::parse(bytes, &document, &reason) != MappingDocument::Outcome::Parsed) {
        require(!reason.isEmpty(), "a reason is given");
        return;
    }
    int depth = 1;
    for (QDomNode node = document.firstChild(); !node.isNull();) {
        require(depth <= MappingDocument::maximumDepth + 1, "the tree is as shallow as promised");
        if (!node.firstChild().isNull()) {
            node = node.firstChild();
            ++depth;
            continue;
        }
        while (!node.isNull() && node.nextSibling().isNull()) {
            node = node.parentNode();
            --depth;
        }
        node = node.nextSibling();
    }
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
    checkDepth(bytes);

    fuzz::write(custom(), bytes);
    Maps maps;
    const bool readable = readList(custom(), &maps);
    const std::unique_ptr<ZRButtonMap> current = readCurrent(custom());
    require((current != nullptr) == !maps.empty(), "the current map is the first of the list");
    require(current == nullptr || current->name == maps.front()->name, "list and single map agree");

    XmlMappingWriter writer(folder());
    for (std::size_t i = 0; i < maps.size() && i < 2; ++i) {
        writer.saveMap(maps[i].get(), QStringLiteral("/current.xml"), true);
        const std::unique_ptr<ZRButtonMap> again = readCurrent(folder() + QStringLiteral("/current.xml"));
        require(again != nullptr, "what was written is read");
        requireEqual(*again, *maps[i]);
    }

    Maps later;
    writer.removeMap(maps.empty() ? QStringLiteral("a") : maps.front()->name);
    require(readList(custom(), &later) == readable, "removing keeps the file as readable as it was");
    require(later.size() <= maps.size(), "removing adds nothing");
    require(readable || fuzz::content(custom()) == bytes, "a file that is not readable is not touched");

    fuzz::write(custom(), bytes);
    const ZRButtonMap added(QStringLiteral("added"), nullptr);
    writer.saveToCustom(&added);
    const bool saved = readList(custom(), &later);
    require(saved || !readable, "saving keeps a readable file readable");
    if (saved) {
        require(later.size() == maps.size() || later.size() == maps.size() + 1,
                "saving adds one map at most");
    } else {
        require(fuzz::content(custom()).startsWith(bytes),
                "saving into a file that is not readable loses nothing");
    }
    return 0;
}
