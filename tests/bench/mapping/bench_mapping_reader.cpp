// Reads libraries of growing size and compares the time with what Qt's DOM parser alone needs for the same
// file.
//
//     bench_mapping_reader [most mappings]
//
// And a hostile file: a hundred thousand empty mappings as the user's own, read by the session as at a start,
// compared with the program's own bounded parse of it.
//
// Every measurement runs in a process of its own, as a library is read once a start: a second parse in the
// same process finds the memory of the first and costs half. Prints one line a size; ends with status 1 when
// reading costs more than the limit or does not grow linearly.

#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingSession.h"
#include "mapping/XmlMappingReader.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <malloc.h>
#include <vector>

namespace
{

constexpr double ratioLimit = 1.5;
constexpr double growthLimit = 1.5; // the time for a mapping of the largest library over that of the smallest
constexpr int rounds = 3;
constexpr int emptyMappings = 100'000;
constexpr double emptyRatioLimit = 2;

// A library as the writer would have written it: shortcuts, and a few special and MIDI actions.
QByteArray library(int mappings)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<ZR>\n";
    for (int mapping = 0; mapping < mappings; ++mapping) {
        xml += " <MAPPING software=\"Program " + QByteArray::number(mapping) + "\">\n";
        for (int button = 0; button < ActionTable::controlCount; ++button) {
            xml += "  <BUTTON id=\"" + QByteArray::number(button) + "\">\n";
            for (const Layer layer : Layers::all) {
                const QByteArray name = Layers::fileName(layer).toLatin1();
                xml +=
                    "   <" + name + " label=\"Action " + QByteArray::number(Layers::number(layer)) + "\">\n";
                if (button == 0) {
                    xml += "    <KEY1 type=\"special\">vertical</KEY1>\n";
                } else if (button == 1) {
                    xml += "    <KEY1 type=\"midi\" channel=\"1\" cc=\"7\" on_touch=\"127\" "
                           "after_touch=\"0\" note=\"0\""
                           " after_touch_on=\"1\" knobcc=\"0\" m01h=\"0\" m3fh=\"0\" m0_127=\"0\"/>\n";
                } else {
                    xml += "    <KEY1 type=\"int\">17</KEY1>\n    <KEY2 type=\"int\">90</KEY2>\n"
                           "    <KEY3 type=\"int\">-1</KEY3>\n";
                }
                xml += "   </" + name + ">\n";
            }
            xml += "  </BUTTON>\n";
        }
        xml += " </MAPPING>\n";
    }
    return xml + "</ZR>\n";
}

double peakMebibytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("VmHWM:")) {
                return line.mid(6).replace("kB", "").trimmed().toDouble() / 1024;
            }
        }
    }
    return 0;
}

bool parseAlone(const QString &path)
{
    QFile source(path);
    QDomDocument document;
    return source.open(QIODevice::ReadOnly) && document.setContent(&source);
}

bool readAll(const QString &path)
{
    XmlMappingReader reader;
    int count = 0;
    QObject::connect(&reader, &XmlMappingReader::newMapListReady, &reader,
                     [&count](const QList<ZRButtonMap *> &maps) {
                         count = maps.size();
                         qDeleteAll(maps);
                     });
    reader.readMapList(path, false);
    return count > 0;
}

// The user's mappings in the folder @p directory, as at a start. The session stays, as the program's does.
bool load(const QString &directory)
{
    auto *session = new MappingSession(directory, QCoreApplication::instance());
    session->load([] {}, [] { return ActionTable(); });
    return session->custom().size() == emptyMappings;
}

// As the program parses: within bounds.
bool parseBounded(const QString &path)
{
    QDomDocument document;
    QString reason;
    return MappingDocument::parse(MappingFile::read(path).bytes, &document, &reason) ==
           MappingDocument::Outcome::Parsed;
}

bool carryOut(const QString &mode, const QString &path)
{
    if (mode == QLatin1String("bounded")) {
        return parseBounded(path);
    }
    if (mode == QLatin1String("parse")) {
        return parseAlone(path);
    }
    return mode == QLatin1String("read") ? readAll(path) : load(path);
}

struct Measurement {
    double milliseconds = 0;
    double mebibytes = 0;
};

[[noreturn]] void giveUp(const char *why)
{
    std::fprintf(stderr, "%s\n", why);
    std::exit(2);
}

int measureHere(const QString &mode, const QString &path)
{
    // CPU time of user and system: what else the machine does then counts for little.
    const std::clock_t start = std::clock();
    if (!carryOut(mode, path)) {
        giveUp("the file was not read");
    }
    // A tree's million freed pieces are put together by the allocator at the next large request, which may
    // come after a parse alone: it counts for all.
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    const std::clock_t end = std::clock();
    std::printf("%.3f %.1f\n", static_cast<double>(end - start) * 1000 / CLOCKS_PER_SEC, peakMebibytes());
    return 0;
}

Measurement measure(const QString &mode, const QString &path)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {mode, path});
    constexpr int patience = 120000;
    if (!process.waitForFinished(patience) || process.exitCode() != 0) {
        giveUp("a measurement failed");
    }
    const QList<QByteArray> values = process.readAllStandardOutput().trimmed().split(' ');
    return {values.value(0).toDouble(), values.value(1).toDouble()};
}

Measurement best(const std::vector<Measurement> &all)
{
    return *std::min_element(all.begin(), all.end(), [](const Measurement &a, const Measurement &b) {
        return a.milliseconds < b.milliseconds;
    });
}

bool emptyMappingsAreReadInTime()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("custom.xml"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write("<ZR>" + QByteArray("<MAPPING/>").repeated(emptyMappings) + "</ZR>") < 0) {
        giveUp("the mappings cannot be written");
    }
    file.close();
    std::vector<Measurement> parses;
    std::vector<Measurement> loads;
    for (int round = 0; round < rounds; ++round) {
        parses.push_back(measure(QStringLiteral("bounded"), path));
        loads.push_back(measure(QStringLiteral("load"), directory.path()));
    }
    const Measurement parse = best(parses);
    const Measurement load = best(loads);
    const double ratio = load.milliseconds / parse.milliseconds;
    std::printf("%6d empty mappings: bare bounded parse %5.0f ms, %5.0f MiB; load %5.0f ms, %5.0f MiB; "
                "ratio %.2f (at most %.2f)\n",
                emptyMappings, parse.milliseconds, parse.mebibytes, load.milliseconds, load.mebibytes, ratio,
                emptyRatioLimit);
    return ratio <= emptyRatioLimit;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3) {
        return measureHere(arguments.at(1), arguments.at(2));
    }
    const int most = arguments.size() == 2 ? std::max(10, arguments.at(1).toInt()) : 10000;
    const std::array<int, 3> sizes{most / 10, most * 3 / 10, most};
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("ZR.xml"));

    bool good = true;
    double smallest = 0;
    for (const int size : sizes) {
        QFile file(path);
        const QByteArray content = library(size);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            giveUp("the library cannot be written");
        }
        file.close();

        std::vector<Measurement> parses;
        std::vector<Measurement> reads;
        for (int round = 0; round < rounds; ++round) { // in turns, so that a busy moment hits both
            parses.push_back(measure(QStringLiteral("parse"), path));
            reads.push_back(measure(QStringLiteral("read"), path));
        }
        const Measurement parse = best(parses);
        const Measurement read = best(reads);
        const double each = read.milliseconds / size;
        smallest = smallest > 0 ? smallest : each;
        const double ratio = read.milliseconds / parse.milliseconds;
        const double growth = each / smallest;
        std::printf("%6d mappings, %5.1f MB: bare DOM parse %5.0f ms, %5.0f MiB; read %5.0f ms, %5.0f MiB; "
                    "ratio %.2f (at most %.2f), growth %.2f (at most %.2f)\n",
                    size, static_cast<double>(content.size()) / 1e6, parse.milliseconds, parse.mebibytes,
                    read.milliseconds, read.mebibytes, ratio, ratioLimit, growth, growthLimit);
        good = good && ratio <= ratioLimit && growth <= growthLimit;
    }
    good = emptyMappingsAreReadInTime() && good;
    return good ? 0 : 1;
}
