#include "remote/RemotePlace.h"

// Names of pipes are the machine's: this one carries the user's mark, and the pipe itself lets nobody else
// in (QLocalServer::UserAccessOption).

namespace
{

QString pipe(const QString &userMark)
{
    return QStringLiteral("veltrix-remote") + userMark;
}

} // namespace

RemotePlace RemotePlace::toListen(const QString &userMark)
{
    return {pipe(userMark), QString()};
}

RemotePlace RemotePlace::toAsk(const QString &userMark)
{
    return {pipe(userMark), QString()};
}

bool RemotePlace::isOwn(qintptr)
{
    return true;
}
