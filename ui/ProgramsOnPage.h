#pragma once

#include <QObject>
#include <QSet>

class ComboMenuBar;
class MapNotices;
class ProgramChoice;
class ProgramMappings;
class ProgramSwitch;

/// What the device page has to do with programs: it offers a mapping of their own, says when one could not be
/// kept, and has the change to another program wait while the user is choosing something on it.
class ProgramsOnPage : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProgramsOnPage)

public:
    /// @p page owns this object and what it shows. The others must outlive it.
    ProgramsOnPage(ProgramSwitch &programs, ProgramMappings &mappings, MapNotices &notices, QWidget *page);

    /// Has the change wait while it lives, and until control is back in the event loop: the user is asked
    /// something. @p programs may be null, and must outlive it otherwise.
    class Asking
    {
        Q_DISABLE_COPY_MOVE(Asking)

    public:
        explicit Asking(ProgramsOnPage *programs);
        ~Asking();

    private:
        ProgramsOnPage *m_programs;
    };

    /// Reads the programs' mappings, after the session has read its own.
    void load();

    /// Null where the session does not tell which program has the focus.
    ProgramChoice *choice() const { return m_choice; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchChild(QObject *child);
    void setChoosing(QObject *where, bool choosing);
    void setAsking(int change);
    void tellChoosing();

    ProgramSwitch &m_programs;
    ProgramMappings &m_mappings;
    MapNotices &m_notices;
    ProgramChoice *m_choice = nullptr;
    QSet<QObject *> m_watched;
    QSet<QObject *> m_choosing; // menus and dialogs that are open
    int m_asking = 0;           // as often as the user is asked
};
