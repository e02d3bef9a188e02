#include "tests/platform/net/UpdaterRig.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

UpdaterRig::UpdaterRig()
{
    build(setup());
}

ZRUpdater::Setup UpdaterRig::setup()
{
    ZRUpdater::Setup setup;
    setup.version = QStringLiteral("1.10");
    setup.serviceUrl = server.url("/api/");
    setup.installerFile = installer();
    setup.application = dir.filePath(QStringLiteral("application"));
    setup.prompt = prompt.get();
    setup.signingKey.clear();
    setup.mode = ZRUpdater::Mode::Install;
    setup.network = &network;
    setup.alarm = &alarm;
    setup.quit = [this] { ++quits; };
    return setup;
}

void UpdaterRig::build(const ZRUpdater::Setup &setup)
{
    updater = std::make_unique<ZRUpdater>(setup);
    signalsSeen.clear();
    const auto record = [this](void (ZRUpdater::*signal)(), const char *name) {
        QObject::connect(updater.get(), signal,
                         [this, name] { signalsSeen.append(QString::fromLatin1(name)); });
    };
    record(&ZRUpdater::onDownloadStart, "start");
    record(&ZRUpdater::onDownloadComplete, "complete");
    record(&ZRUpdater::onDownloadInterrupted, "interrupted");
    record(&ZRUpdater::onDownloadCanceled, "canceled");
    record(&ZRUpdater::onNoUpdate, "no update");
    record(&ZRUpdater::onNoInet, "no inet");
    QObject::connect(updater.get(), &ZRUpdater::onUpdateAvailable, [this](const QString &version) {
        signalsSeen.append(QStringLiteral("available ") + version);
    });
    QObject::connect(updater.get(), &ZRUpdater::onDownloading, [this](float fraction) {
        ++progressReports;
        lastProgress = fraction;
    });
}

void UpdaterRig::setOffer(const char *version, const char *priority, const QString &url,
                          const QByteArray &signature)
{
    QJsonObject answer{{QStringLiteral("UPDATE_VERSION"), QString::fromLatin1(version)},
                       {QStringLiteral("UPDATE_PRIORITY"), QString::fromLatin1(priority)},
                       {QStringLiteral("UPDATE_URL"), url}};
    if (!signature.isEmpty()) {
        answer.insert(QStringLiteral("UPDATE_SIGNATURE"), QString::fromLatin1(signature));
    }
    setAnswer(QJsonDocument(answer).toJson());
}

void UpdaterRig::check()
{
    updater->startCheckingPeriodically();
    bool finished = false; // the updater takes connections of before away
    QObject::connect(&network, &QNetworkAccessManager::finished, &network, [&finished] { finished = true; });
    QVERIFY(QTest::qWaitFor([&finished] { return finished; }, 10000));
}

bool UpdaterRig::waitFor(const QString &signal)
{
    return QTest::qWaitFor([&] { return signalsSeen.contains(signal); }, 10000);
}
