#pragma once

#include "remote/RemoteMessage.h"

#include <QString>

/// The other end of the remote control: asks the running copy, and waits for what it says.
namespace RemoteClient
{

constexpr int patience = 30000; ///< ms, for an answer: a large file may be read meanwhile

/// The exit status when no copy runs that could be asked.
constexpr int notRunning = 3;

/// What the running copy of this user says to @p request. When there is none, or it says nothing, the answer
/// tells that, in the user's language. Needs an application object, but no event loop. @p userMark as for
/// RemotePlace.
RemoteAnswer ask(const RemoteRequest &request, const QString &userMark, int clientPatience = patience);

} // namespace RemoteClient
