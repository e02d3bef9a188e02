#pragma once

#include "MappingFixtures.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/log/LogCapture.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

/// A reader, the file that it reads, and what it has said last. It never warns.
class ReaderInFolder
{
protected:
    void begin()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<LogCapture>();
        m_reader = std::make_unique<XmlMappingReader>();
        m_lists = 0;
        m_custom = false;
        m_default = -1;
        m_current = nullptr;
        m_list.clear();
        QObject::connect(m_reader.get(), &XmlMappingReader::newMapListReady, m_reader.get(),
                         [this](const QList<ZRButtonMap *> &maps, bool custom, int defaultMap) {
                             ++m_lists;
                             m_list = maps;
                             m_custom = custom;
                             m_default = defaultMap;
                             for (ZRButtonMap *map : maps) {
                                 m_owned.emplace_back(map);
                             }
                         });
        QObject::connect(m_reader.get(), &XmlMappingReader::onCurrentMapLoaded, m_reader.get(),
                         [this](ZRButtonMap *map) {
                             m_current = map;
                             m_owned.emplace_back(map);
                         });
    }
    void end()
    {
        QCOMPARE(m_log->warnings(), QStringList());
        m_log.reset();
        m_reader.reset();
        m_owned.clear();
    }
    QString write(const QByteArray &xml) const
    {
        QString path = m_directory->filePath(QStringLiteral("mappings.xml"));
        writeFile(path, xml);
        return path;
    }
    const QList<ZRButtonMap *> &list(const QByteArray &xml, bool custom = false)
    {
        m_list.clear();
        m_reader->readMapList(write(xml), custom);
        return m_list;
    }
    /// The entry that @p layer, the content of one button, puts into a map.
    shortCut entry(const QByteArray &layer, int button = 0, int index = 0)
    {
        const QByteArray id = QByteArray::number(button);
        list("<ZR><MAPPING><BUTTON id=\"" + id + "\">" + layer + "</BUTTON></MAPPING></ZR>");
        if (m_list.size() != 1) {
            qFatal("the mapping was not read");
        }
        return m_list.first()->actions[button][*Layers::fromNumber(index)];
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<XmlMappingReader> m_reader;
    QList<ZRButtonMap *> m_list;
    std::vector<std::unique_ptr<ZRButtonMap>> m_owned;
    int m_lists = 0;
    bool m_custom = false;
    int m_default = -1;
    ZRButtonMap *m_current = nullptr;
};
