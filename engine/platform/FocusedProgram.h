#pragma once

#include <QObject>
#include <QString>

/// Tells which of the other programs has the keyboard's focus.
///
/// By events of the system, never by polling; while nobody watches, nothing runs. This program's own windows
/// are never told, nor that no window has the focus: what was told last is then still the program that the
/// user works with. Used on the GUI thread. This class itself is the one for sessions that show nothing of
/// the kind.
class FocusedProgram : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FocusedProgram)

public:
    /// A program, as far as its windows tell.
    struct Program {
        QString id;   ///< the same at every start of it, also of another version; empty for none
        QString name; ///< for the user

        /// The program whose windows or executable file are called @p text, which comes from a stranger:
        /// anything may stand there. The number of a version at its end, as in "Gimp-2.10", is no part of the
        /// program.
        static Program called(const QString &text);

        friend bool operator==(const Program &a, const Program &b) { return a.id == b.id; }
        friend bool operator!=(const Program &a, const Program &b) { return !(a == b); }
    };

    FocusedProgram() = default;

    /// Whether this session tells at all.
    virtual bool isTold() const { return false; }

    /// Begins to watch, and tells at once, within the call, of the program that has the focus now or, when
    /// that is this one, had it before as far as the system knows. Or stops. Where that fails the log says
    /// why.
    virtual void setWatched(bool) {}

Q_SIGNALS:
    void focused(const FocusedProgram::Program &program);
};
