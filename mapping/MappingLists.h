#pragma once

#include "mapping/FileResult.h"
#include "mapping/MappingFiles.h"
#include "mapping/XmlMappingReader.h"
#include "mapping/ZRButtonMap.h"

#include <QList>
#include <QObject>

#include <utility>

/// The library's and the user's mappings, in the order of their files, and the owner of both. Writes no
/// mapping. Lives on the GUI thread.
class MappingLists : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MappingLists)

public:
    /// Touches none of @p files, which are to live longer.
    explicit MappingLists(const MappingFiles &files, QObject *parent = nullptr);

    /// Reads both files for the first time. A library that is none is replaced before by the last one that
    /// was read, or by the seed (see LibraryKeeper).
    void load();

    const QList<ZRButtonMap *> &library() const { return m_library.maps; }
    const QList<ZRButtonMap *> &custom() const { return m_custom.maps; }

    /// The library's default mapping, null when it has none.
    const ZRButtonMap *defaultMapping() const { return m_library.maps.value(m_library.defaultMap); }

    /// Reads the library again and keeps a copy of it. One without any mapping leaves the list as it is, and
    /// so does a failure.
    FileResult readLibrary();

    /// Reads the user's mappings again. A failure, such as that there is no file, leaves the list as it is.
    FileResult readCustom();

    /// The same where it is not the user who has to be told: without a file there are none.
    void followCustom();

    /// What openXml() asks from now on.
    void setFileChooser(XmlMappingReader::FileChooser chooser)
    {
        m_reader.setFileChooser(std::move(chooser));
    }

    /// Asks for a file and shows its mappings as the library's, until that is read again.
    void openXml() { m_reader.openXml(); }

Q_SIGNALS:
    /// The library's list (not @p custom) or the user's is another one. The maps stay this object's. Those of
    /// the list before are deleted when control has returned to the event loop, but for those that a slot
    /// takes over with setParent().
    void changed(QList<ZRButtonMap *> maps, bool custom, int defaultMap);

private:
    struct List {
        QList<ZRButtonMap *> maps;
        int defaultMap = 0;
    };

    void take(const QList<ZRButtonMap *> &maps, bool custom, int defaultMap);

    const MappingFiles &m_files;
    XmlMappingReader m_reader;
    List m_library;
    List m_custom;
};
