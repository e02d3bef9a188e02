#include "app/RemoteCommands.h"

#include "app/AppLog.h"
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
    // The running copy has been woken already: that it says nothing is no reason to fail, or to wait for
    // long.
    constexpr int patience = 1000; // ms
    const RemoteAnswer answer =
        RemoteClient::ask({QStringLiteral("verbose"), {}, false}, Session::userMark(), patience);
    if (answer.status != 0) {
        qCInfo(lcApp).noquote() << "the running copy was not asked for more in its log:" << answer.text;
    }
    return 0;
}

int RemoteCommands::status(const CommandCall &call)
{
    return ask(QStringLiteral("status"), call);
}
