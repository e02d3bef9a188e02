#pragma once

#include "net/OSHelper.h"
#include "net/UpdatePrompt.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QDownloader;
class QNetworkAccessManager;
class QNetworkReply;
class QTimer;

/// Asks the web service for a newer version of the program, offers it the way the answer's priority wants,
/// downloads its installer, and starts the installer when the program quits.
///
/// One download at a time: while one runs, and once one is complete, no answer and no button starts another.
/// A download that breaks off leaves a file that is never started. With a signing key, an installer whose
/// signature ("UPDATE_SIGNATURE" of the answer) does not verify is deleted. GUI thread only.
class ZRUpdater : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ZRUpdater)

public:
    static constexpr int defaultCheckInterval = 1800000; ///< ms

    /// An installer that is larger is not fetched to its end.
    static constexpr qint64 maximumInstallerSize = 256LL * 1024 * 1024;

    /// What the updater works with. The defaults are the program's; what is empty or null is done without.
    struct Setup {
        QString version;            ///< the program's own, dotted numbers
        QString serviceUrl;         ///< ends in "/"
        QString installerFile;      ///< where the download goes and from where it is started
        QString application;        ///< the running program's file, which a script replaces
        UpdatePrompt *prompt;       ///< stays the caller's; may go before the updater
        std::function<void()> quit; ///< ends the application's event loop
        OSHelper::System system;    ///< how the installer is started
        QByteArray signingKey;      ///< without one, installers need no signature
        int checkInterval;          ///< ms between two checks
        int answerDeadline;         ///< ms in which the service has to answer
        Setup();
    };

    /// The one that the program shares: created on first use, with the default set-up, gone at process exit.
    /// It lets go of its timer and network objects when the application object ends.
    static ZRUpdater *instance();

    explicit ZRUpdater(const Setup &setup = {}, QObject *parent = nullptr);
    ~ZRUpdater() override;

    /// Replaces the set-up. To be called before arm().
    void configure(const Setup &setup);

    /// Starts the checks, the first one as soon as the event loop runs.
    void arm();

    /// Gives a running download up; does nothing otherwise.
    void cancelDownload();

    /// Has the downloaded installer started when the program quits.
    void setInstallOnQuit() { m_installOnQuit = true; }

    /// Ends the program so that the downloaded installer is started, after asking if the update is mandatory.
    /// Where the program cannot be replaced it says so and goes on; the installer stays.
    void install();

    bool isDownloading() const { return m_downloading; }

Q_SIGNALS:
    /// A download that the user asked for begins. A mandatory one begins in silence.
    void onDownloadStart();
    /// The fraction that has arrived, 0 to 1; negative or no number when the length is unknown.
    void onDownloading(float fraction);
    /// The installer is complete. One listener is to have it installed with install().
    void onDownloadComplete();
    /// A download failed without having been cancelled.
    void onDownloadInterrupted();
    void onDownloadCanceled();
    /// The service's version is not greater than the program's own.
    void onNoUpdate();
    /// The service could not be asked.
    void onNoInet();
    /// To be offered in the window; onUpdateAllowed() takes the offer.
    void onUpdateAvailable(QString version);

public Q_SLOTS:
    /// Asks the service, and again after the check interval.
    void startCheckingPeriodically();
    void onUpdateResponse(QNetworkReply *reply);
    void dowloadFinished(bool success);
    void downloadProgress(float fraction);
    void onUpdateCanceled();
    void onUpdateAllowed();
    void onCloseAllowed();
    /// Starts the installer, if one waits. To be connected to the application's signal of this name.
    void aboutToQuit();

private:
    void offer(const QString &priority);
    void ask(const QString &text, const QString &button1, const QString &button2, void (ZRUpdater::*first)(),
             void (ZRUpdater::*second)());
    void startDownload();
    bool acceptInstaller() const;
    bool isBusy() const;
    void release();

    Setup m_setup;
    QPointer<UpdatePrompt> m_prompt;
    QPointer<QTimer> m_checkTimer;
    QPointer<QNetworkAccessManager> m_network;
    QPointer<QDownloader> m_downloader;
    QString m_updateUrl;
    QString m_updateVersion;
    QString m_updateSignature;
    bool m_downloading = false;
    bool m_mandatory = false;
    bool m_installOnQuit = false;
    bool m_complete = false; // the installer has arrived whole, and verifies
};
