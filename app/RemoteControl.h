#pragma once

#include "remote/RemoteMessage.h"

#include <QCoreApplication>

#include <functional>

class EventDispatcher;
class MappingSession;

/// What the running copy does and says when another process of the user's asks.
///
/// | command   | arguments | answers                                          |
/// |-----------|-----------|--------------------------------------------------|
/// | "use"     | a name    | nothing, or that there is no such mapping        |
/// | "list"    |           | the names, the user's own first                  |
/// | "import"  | a file    | what was imported, or what is wrong with it      |
/// | "show"    |           | nothing                                          |
/// | "status"  |           | device, mapping, layer and mode                  |
/// | "restore" | a path    | which version is back, or why it is not          |
/// | "verbose" |           | nothing; every event goes to the log from now on |
class RemoteControl
{
    Q_DECLARE_TR_FUNCTIONS(RemoteControl)

public:
    struct Parts {
        MappingSession *mappings;
        const EventDispatcher *dispatcher;
        std::function<bool()> isConnected; ///< whether the device is there
        std::function<void()> show;        ///< the window, in front
    };

    /// @p parts must outlive this object.
    explicit RemoteControl(Parts parts);

    RemoteAnswer answer(const RemoteRequest &request) const;

private:
    RemoteAnswer use(const RemoteRequest &request) const;
    RemoteAnswer list(const RemoteRequest &request) const;
    RemoteAnswer importFile(const RemoteRequest &request) const;
    RemoteAnswer show(const RemoteRequest &request) const;
    RemoteAnswer status(const RemoteRequest &request) const;
    RemoteAnswer restore(const RemoteRequest &request) const;
    RemoteAnswer verbose(const RemoteRequest &request) const;

    Parts m_parts;
};
