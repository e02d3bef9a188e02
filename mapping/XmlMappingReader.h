#pragma once

#include "mapping/FileResult.h"
#include "mapping/ZRButtonMap.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QXmlStreamReader>

#include <functional>
#include <utility>

/// Reads mapping files and announces what they hold by signal.
///
/// A file that is missing, unreadable, too large (MappingFile::maximumSize), too deep
/// (MappingDocument::maximumDepth) or malformed leaves a log line and causes no signal: the result says so.
/// Values that do not convert become 0 (numbers), -1 (empty character keys) or false (flags).
class XmlMappingReader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(XmlMappingReader)

public:
    /// Asks the user for a file: the full path, or an empty text when the user cancels.
    using FileChooser =
        std::function<QString(const QString &title, const QString &directory, const QString &filter)>;

    /// @p chooser is what openXml() asks; without one, openXml() acts as if cancelled.
    explicit XmlMappingReader(FileChooser chooser = nullptr, QObject *parent = nullptr);

    /// Reads every mapping of the file at @p path, in document order, and emits newMapListReady(), also for a
    /// file without any. @p custom is passed through. An empty path reads nothing.
    FileResult readMapList(const QString &path, bool custom);

    /// Reads the first mapping of the file at @p path and emits onCurrentMapLoaded(); a failure if there is
    /// none.
    FileResult readCurrentMap(const QString &path);

    /// Lets the user choose a file and reads it as a list that is not the user's own.
    void openXml();

    /// What a mapping is called that has no name in its file, or an empty one.
    static const QString &nameForNone();

    /// Whether @p map came from a file without a name for it: another may really be called nameForNone(). Its
    /// name is the very one, not one that reads the same: the map itself has no place for more.
    static bool isNameless(const ZRButtonMap &map);

    /// What openXml() asks from now on.
    void setFileChooser(FileChooser chooser) { m_chooser = std::move(chooser); }

    /// The list of the last successful readMapList(). The maps belong to whoever received the signal: after
    /// it has deleted them, the pointers here dangle.
    const QList<ZRButtonMap *> &buttonMapList() const { return m_buttonMapList; }

Q_SIGNALS:
    /// The receiver owns the maps, which have no parent. @p defaultMap is the index of the last mapping
    /// marked as default, 0 if none is.
    void newMapListReady(QList<ZRButtonMap *> buttonMapList, bool custom, int defaultMap);

    /// The receiver owns the map, which has no parent.
    void onCurrentMapLoaded(ZRButtonMap *buttonMap);

private:
    QXmlStreamReader m_stream; // part of the declared interface, deliberately without a use
    QList<ZRButtonMap *> m_buttonMapList;
    FileChooser m_chooser;
};
