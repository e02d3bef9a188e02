#pragma once

#include "engine/platform/FocusedProgram.h"

#include <QMetaObject>
#include <QObject>

class EventDispatcher;
class ProgramMappings;

/// Has the mapping act that belongs to the program with the focus.
///
/// While a button is down or the knob is touched nothing changes, nor while the user is choosing something
/// for the mapping that he sees; what had the focus last by the end of that counts then. The focus is watched
/// only while some program has a mapping of its own, or while the user looks at the page on which he can give
/// it one.
class ProgramSwitch : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProgramSwitch)

public:
    using Program = FocusedProgram::Program;

    /// The arguments must outlive this object.
    ProgramSwitch(FocusedProgram &focus, const EventDispatcher &dispatcher, ProgramMappings &mappings,
                  QObject *parent = nullptr);
    ~ProgramSwitch() override;

    /// Whether this session tells which program has the focus.
    bool isOffered() const { return m_focus.isTold(); }

    /// The program that had the focus last, other than this one; its id is empty when there was none.
    const Program &last() const { return m_last; }

    void setPageShown(bool shown);

    /// Whether a menu or dialog is open whose choice is for the mapping that the user sees.
    void setChoosing(bool choosing);

Q_SIGNALS:
    /// last() is another one.
    void lastChanged();

private:
    void follow();
    void onFocused(const Program &program);
    void apply();

    FocusedProgram &m_focus;
    const EventDispatcher &m_dispatcher;
    ProgramMappings &m_mappings;
    Program m_last;
    bool m_pageShown = false;
    bool m_choosing = false;
    QMetaObject::Connection m_waiting;
};
