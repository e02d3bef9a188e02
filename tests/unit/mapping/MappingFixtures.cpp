#include "MappingFixtures.h"

#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"

#include <QFile>

QByteArray emptyDocument()
{
    return QByteArrayLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><ZR/>\n");
}

std::unique_ptr<ZRButtonMap> sampleMap(const QString &name)
{
    auto map = std::make_unique<ZRButtonMap>(name, nullptr);
    const auto keys = [](qint32 key1, qint32 key2, qint32 key3, const QString &label) {
        shortCut entry;
        entry.key1 = key1;
        entry.key2 = key2;
        entry.key3 = key3;
        entry.label = label;
        return entry;
    };
    map->actions[0][Layer::Normal] = keys(17, 90, -1, QStringLiteral("Undo"));
    map->actions[0][Layer::Shift1] = keys(-1, -1, -1, QString());
    map->actions[0][Layer::Shift2] = keys(std::numeric_limits<qint32>::min(),
                                          std::numeric_limits<qint32>::max(), 0, QStringLiteral("most"));
    for (int code = 0; code <= 14; ++code) { // "empty" ones among them
        map->actions[1 + code / 3][Layers::all.at(static_cast<std::size_t>(code % 3))] =
            keys(SPECIAL_ACTION, code, 7, specialActionName(code));
    }
    shortCut midi = keys(MIDI_BUTTON_ACTION, -1, -1, QStringLiteral("Note"));
    midi.channel = 16;
    midi.cc = 60;
    midi.v_on = 127;
    midi.v_off = 1;
    midi.note = true;
    midi.v_off_enable = false;
    map->actions[6][Layer::Normal] = midi;
    midi.key1 = MIDI_KNOB_ACTION;
    midi.label = QStringLiteral("Fader");
    midi.note = false;
    midi.v_off_enable = true;
    midi.knobcc = 20;
    midi.m01h = true;
    midi.m3fh = true;
    midi.m0_127 = true;
    map->actions[6][Layer::Shift1] = midi;
    map->actions[6][Layer::Shift2] = keys(0x1FFFFFE, 0x1001263, 0x1001260, QStringLiteral("no markers"));
    map->actions[7][Layer::Normal] = keys(65, 0, 0, QStringLiteral("  leading, double  and trailing  "));
    map->actions[7][Layer::Shift1] = keys(66, 0, 0, QStringLiteral("<a href=\"x\">&amp; 'q' ]]></a>"));
    map->actions[7][Layer::Shift2] = keys(67, 0, 0, QStringLiteral("one\ntwo\tthree\rfour\r\n"));
    map->actions[8][Layer::Normal] =
        keys(68, 0, 0, QString::fromUtf8("\xE2\x86\x90 \xF0\x9F\x98\x80 \xC3\xA4"));
    return map;
}

shortCut asReadBack(const shortCut &entry)
{
    shortCut read = entry;
    read.knobcc = 0;
    read.m01h = false;
    read.m3fh = false;
    read.m0_127 = false;
    if (entry.key1 == SPECIAL_ACTION) {
        read.key2 = specialActionCode(specialActionName(entry.key2));
        read.key3 = -1;
    }
    return read;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("%s cannot be read", qPrintable(path));
    }
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

std::vector<std::unique_ptr<ZRButtonMap>> mapsOf(const QString &path)
{
    std::vector<std::unique_ptr<ZRButtonMap>> maps;
    XmlMappingReader reader;
    QObject::connect(&reader, &XmlMappingReader::newMapListReady, &reader,
                     [&maps](const QList<ZRButtonMap *> &list) {
                         for (ZRButtonMap *map : list) {
                             maps.emplace_back(map);
                         }
                     });
    reader.readMapList(path, true);
    return maps;
}
