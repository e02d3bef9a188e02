#pragma once

#include "net/Alarm.h"
#include "net/HttpManager.h"
#include "net/ZRUpdater.h"
#include "tests/platform/net/FakePrompt.h"
#include "tests/support/http/HttpServer.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <utility>

/// Lets the time until the next check pass by hand.
class ManualAlarm : public Alarm
{
public:
    void set(int milliseconds, std::function<void()> newAction) override
    {
        waits.append(milliseconds);
        action = std::move(newAction);
    }
    /// The time is over.
    void ring()
    {
        const auto due = std::exchange(action, nullptr);
        due();
    }

    QList<int> waits; ///< ms, each that was set
    std::function<void()> action;
};

/// An updater of version 1.10, a service for it, a prompt and a record of its signals.
class UpdaterRig
{
    Q_DISABLE_COPY_MOVE(UpdaterRig)

public:
    UpdaterRig();

    /// Before the first use of `updater`.
    void build(const ZRUpdater::Setup &setup);
    ZRUpdater::Setup setup();

    /// What the service answers to "zrversion".
    void setAnswer(const QByteArray &body) { server.setAnswer("/api/", body); }
    void setOffer(const char *version, const char *priority, const QString &url,
                  const QByteArray &signature = {});

    /// Asks the service and waits for what comes of it.
    void check();
    /// Waits until `signal` has been recorded.
    bool waitFor(const QString &signal);

    QString installer() const { return dir.filePath(QStringLiteral("update/installer")); }

    QTemporaryDir dir;
    HttpServer server;
    HttpManager network;
    ManualAlarm alarm;
    std::unique_ptr<FakePrompt> prompt = std::make_unique<FakePrompt>();
    std::unique_ptr<ZRUpdater> updater;
    QStringList signalsSeen; ///< by name, the offer with its version
    int quits = 0;
    int progressReports = 0;
    float lastProgress = 0;
};
