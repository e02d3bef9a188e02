#pragma once

#include <QString>
#include <QtGlobal>

/// The place at which a user's running copy is reached: one that nobody else can use, or put something else
/// into.
struct RemotePlace {
    QString name;    ///< what the toolkit's local sockets call it; empty: there is none that can be trusted
    QString problem; ///< why, in plain English, for the log

    /// For a running copy. Makes the place, and clears away a socket that a killed copy has left there. Not
    /// while another copy listens. @p userMark is Session::userMark().
    static RemotePlace toListen(const QString &userMark);

    /// For who wants to reach one. No name and no problem: there is no place, so that no copy listens.
    static RemotePlace toAsk(const QString &userMark);

    /// Whether this user is at the other end of a connected socket.
    static bool isOwn(qintptr socket);
};
