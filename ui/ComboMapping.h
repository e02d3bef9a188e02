#pragma once

#include "mapping/ZRButtonMap.h"
#include "ui/ComboMenuBar.h"

#include <QList>

#include <array>
#include <optional>

class MappingList;
class SaveDialog;

/// The mapping selector: a bar whose menu picks a mapping of the library, picks or deletes one of the user's
/// own, or saves what the page shows under a name. Touches no file; the page does what the signals ask for.
///
/// A list that arrives while the menu is open takes effect when the menu is closed and the choice carried
/// out, so that a choice means what the user saw. Mappings that have no owner become the selector's, and
/// those that it shows in an open menu after their list was replaced.
class ComboMapping : public ComboMenuBar
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComboMapping)

public:
    /// The save dialog lies over @p parent, the page, which owns it.
    explicit ComboMapping(QWidget *parent);
    ~ComboMapping() override;

    SaveDialog *saveDialog() const { return m_saveDialog; }

    /// The menu's check marks stand at @p map; at none for null. It need not be in a list.
    void setInUse(const ZRButtonMap *map);

    /// Emits newMap() with the library's default mapping, if the list that arrived last has one.
    void selectDefault();

Q_SIGNALS:
    /// The user has picked this mapping. It may be gone when the next list of its kind has arrived and
    /// control has returned to the event loop: copy it.
    void newMap(ZRButtonMap *buttonMap);

    /// Empty for a mapping that has no name in its file.
    void deleteMap(QString softwareName);

    /// What the save dialog says: save what the page shows as @p name.
    void saveCurrentMap(QString name);

public Q_SLOTS:
    void dislayMenu() override;

    /// Takes the list that the menu shows from when it is opened next, of the user's own mappings when
    /// @p custom is true. The selector's own maps of the list before are deleted as soon as control has
    /// returned to the event loop. @p defaultMap is the index of the library's default mapping.
    void newMapListReady(QList<ZRButtonMap *> defaultButtonMapList, bool custom, int defaultMap);

protected:
    void carryOut(const QAction &chosen) override;
    void menuClosed() override;

private:
    enum Kind : std::size_t { Default, Custom };

    using MapList = QList<ZRButtonMap *>;

    void buildLabels();
    void buildMenu();
    void replace(Kind kind, const MapList &arrived);
    MapList owned(const MapList &maps) const;
    void empty(Kind kind);
    void fill(Kind kind);
    void mark(Kind kind);
    void fillMapping(QMenu &mapping, Kind kind, int index);
    void addAction(QMenu &mapping, const char *text, Kind kind, int index);
    ZRButtonMap *mapAt(Kind kind, int index) const;

    SaveDialog *m_saveDialog;                  // the page's
    std::array<MappingList *, 2> m_submenus{}; // the menu's
    std::array<MapList, 2> m_maps;
    std::array<bool, 2> m_filled{};       // whether the submenu shows them already
    const ZRButtonMap *m_inUse = nullptr; // to compare with, no more
    int m_defaultMap = 0;
    std::array<std::optional<MapList>, 2> m_arrived; // while the menu was open
};
