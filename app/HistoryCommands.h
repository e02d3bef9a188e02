#pragma once

#include "app/Commands.h"
#include "remote/RemoteMessage.h"

class FileResult;

/// Earlier versions of the user's mapping files.
namespace HistoryCommands
{

/// Lists them, the newest first.
int list(const CommandCall &call);

/// The running copy brings one back; where none runs, it is done here.
int restore(const CommandCall &call);

/// What whoever asked for @p version is told.
RemoteAnswer answerTo(const QString &version, const FileResult &result);

} // namespace HistoryCommands
