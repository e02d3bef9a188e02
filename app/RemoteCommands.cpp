#include "app/RemoteCommands.h"

#include "engine/platform/Session.h"
#include "remote/RemoteClient.h"

namespace
{

int ask(const QString &command, const CommandCall &call)
{
    const RemoteAnswer answer = RemoteClient::ask({command, call.values, call.json}, Session::userMark());
    return Commands::answer(answer.status, answer.text);
}

} // namespace

int RemoteCommands::use(const CommandCall &call)
{
    return ask(QStringLiteral("use"), call);
}

int RemoteCommands::list(const CommandCall &call)
{
    return ask(QStringLiteral("list"), call);
}

int RemoteCommands::show(const CommandCall &call)
{
    Session::letOthersComeToFront();
    return ask(QStringLiteral("show"), call);
}

int RemoteCommands::verbose()
{
    return ask(QStringLiteral("verbose"), {});
}

int RemoteCommands::status(const CommandCall &call)
{
    return ask(QStringLiteral("status"), call);
}
