#pragma once

#include "net/ZRUpdater.h"
#include "tests/platform/net/FakePrompt.h"
#include "tests/support/http/HttpServer.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

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
    std::unique_ptr<FakePrompt> prompt = std::make_unique<FakePrompt>();
    std::unique_ptr<ZRUpdater> updater;
    QStringList signalsSeen; ///< by name, the offer with its version
    int quits = 0;
    int progressReports = 0;
    float lastProgress = 0;
};
