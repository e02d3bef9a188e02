#pragma once

#include "mapping/FileResult.h"
#include "mapping/ZRButtonMap.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QXmlStreamReader>

/// Adds mappings to the files of the data directory and removes them.
///
/// What cannot be done leaves a log line, and the result says why. A file always holds the
/// old or the new whole document, its permissions survive, and a symbolic link stays one. Files that are no
/// regular files, larger than MappingFile::maximumSize, nested too deep (MappingDocument) or not to be opened
/// for reading and writing are left untouched.
class XmlMappingWriter : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(XmlMappingWriter)

public:
    /// @p dataDirectory: where the files are; empty means the application-data location at the time of each
    /// call.
    explicit XmlMappingWriter(const QString &dataDirectory = QString(), QObject *parent = nullptr);

    /// Appends @p map to the file @p fileName ("/" and a name) of the data directory, creating the file if
    /// needed. With @p alone the file holds only this mapping afterwards. Existing mappings of the same name
    /// stay.
    ///
    /// A file that is not well-formed is replaced with @p alone; without, it keeps its content, an empty
    /// document is appended to it as text, and the mapping is not saved: the result says so, and a copy of
    /// the file as it was lies beside it (see BrokenFile). A document without a `ZR` element at
    /// the top is rewritten without the mapping. Characters that XML cannot carry are dropped from name and
    /// labels.
    FileResult saveMap(const ZRButtonMap *map, const QString &fileName, bool alone);

    /// The same for several maps, in their order: all of them or none.
    FileResult saveMaps(const QList<const ZRButtonMap *> &maps, const QString &fileName, bool alone);

    /// The bytes of a file that holds @p map alone, the same for the same mapping on every computer. Else it
    /// looks as saveMap() writes one.
    static QByteArray fileOf(const ZRButtonMap &map);

    /// Appends @p map to "/custom.xml".
    FileResult saveToCustom(const ZRButtonMap *map);

    /// Removes the first mapping called exactly @p name from "/custom.xml"; one without a name is called as
    /// the reader calls it, and an empty @p name means no other. The file is rewritten in any case, if it is
    /// well-formed: that there was none of the name is no failure.
    FileResult removeMap(const QString &name);

Q_SIGNALS:
    /// Part of the declared interface; deliberately never emitted.
    void newMapListReady(QList<ZRButtonMap *> buttonMapList);

private:
    QString fullPath(const QString &fileName) const;

    QXmlStreamReader m_stream; // part of the declared interface, deliberately without a use
    QString m_dataDirectory;
};
