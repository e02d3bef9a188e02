#pragma once

#include "mapping/ActionTable.h"

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include <cstddef>
#include <deque>
#include <optional>

/// One thing that the user did to a mapping, as he is told of it.
struct MappingStep {
    enum class Kind {
        Assign,  ///< a control does something else
        Use,     ///< another mapping is in use
        Save,    ///< the mapping in use became one of the user's own
        Remove,  ///< one of the user's own is gone
        Import,  ///< mappings of a file became the user's own
        Restore, ///< an earlier version of a file is back
    };

    Kind kind = Kind::Assign;
    int control = -1; ///< with Assign
    QString name;     ///< the mapping's or, with Import, the first few mappings', or with Restore the file's
    int mappings = 1; ///< with Import, how many there are
};

Q_DECLARE_METATYPE(MappingStep)

/// What a step changes: what is in use, and at most one file.
struct MappingChange {
    struct State {
        ActionTable actions;
        QString name;     // of the mapping in use
        ActionTable kept; // what the next start begins with
    };

    enum class File {
        None,
        WorkingCopy,
        Custom,
        Keepers, ///< one that is written by what keeps the mapping (MappingSession::Aside), not here
    };

    using Content = std::optional<QByteArray>; ///< none: there was no such file

    MappingStep step;
    int edit = 0; ///< what changes the same control in the same edit is one step; 0: it is one by itself
    State before;
    State after;
    File file = File::None;
    Content contentBefore;
    Content contentAfter;

    /// What takes it back: the same from after to before.
    MappingChange reversed() const;
};

/// The steps that can be taken back, and those that can be done again. Does neither itself.
class MappingSteps
{
public:
    static constexpr std::size_t most = 20; ///< steps; of them as many as hold mostBytes at most

    /// Of the files' contents, all steps together, but for the last step.
    static constexpr qint64 mostBytes = qint64{64} * 1024 * 1024;

    /// The last step now; those that were taken back are gone.
    void add(MappingChange change);

    /// Makes one of the last step and @p change, where both are of one edit: the last one is gone, and
    /// @p change begins where it began. Not with a step that was kept in between. Whether it was so.
    bool joinEdit(MappingChange *change);

    /// Null when there is none. Valid until the next call that is not const.
    const MappingChange *last() const { return m_done.empty() ? nullptr : &m_done.back(); }
    MappingChange *last() { return m_done.empty() ? nullptr : &m_done.back(); }
    const MappingChange *next() const { return m_undone.empty() ? nullptr : &m_undone.back(); }

    void takeBack() { move(m_done, m_undone); }
    void redo() { move(m_undone, m_done); }

    /// Forgets the last step, or the one that could be done again next: it cannot be.
    void dropLast() { m_done.pop_back(); }
    void dropNext() { m_undone.pop_back(); }

    void clear();

private:
    using Changes = std::deque<MappingChange>;

    static void move(Changes &from, Changes &to);

    Changes m_done; // the last step at the back
    Changes m_undone;
};
