#pragma once

#include "net/OSHelper.h"
#include "net/UpdateOffer.h"
#include "net/UpdatePrompt.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class Alarm;
class QDownloader;
class QNetworkAccessManager;
class QNetworkReply;

/// Asks the web service for a newer version of the program, offers it the way the answer's priority wants,
/// downloads its installer, and starts the installer when the program quits.
///
/// An offer stands until another one comes: an answer without one changes nothing. One download at a time:
/// while one runs, and once one is complete, no answer and no button starts another. A download that breaks
/// off leaves a file that is never started. With a signing key, an installer whose signature
/// ("UPDATE_SIGNATURE" of the answer) does not verify for the version that was offered is deleted. GUI thread
/// only.
class ZRUpdater : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ZRUpdater)

public:
    static constexpr int defaultCheckInterval = 1800000; ///< ms

    /// An installer that is larger is not fetched to its end.
    static constexpr qint64 maximumInstallerSize = 256LL * 1024 * 1024;

    /// An installer that takes longer is given up.
    static constexpr int downloadDeadline = 3'600'000; ///< ms

    /// What is done with an offer.
    enum class Mode {
        Install, ///< it is downloaded and started
        Tell,    ///< the user is told, once for each version; for copies that something else keeps up to date
    };

    /// What the updater works with. The defaults are the program's; what is empty or null is done without.
    struct Setup {
        QString version;                ///< the program's own, dotted numbers
        QString serviceUrl;             ///< ends in "/"
        QString installerFile;          ///< where the download goes and from where it is started
        QString application;            ///< the running program's file, which a script replaces
        UpdatePrompt *prompt;           ///< stays the caller's; may go before the updater
        std::function<void()> quit;     ///< ends the application's event loop
        OSHelper::System system;        ///< how the installer is started
        QByteArray signingKey;          ///< without one, installers need no signature
        Mode mode;                      ///< as chosen when the program was built
        QNetworkAccessManager *network; ///< asks the service; stays the caller's; null for one of its own
        Alarm *alarm;                   ///< wakes for the next check; stays the caller's; null for a timer
        int checkInterval;              ///< ms between two checks
        int answerDeadline;             ///< ms in which the service has to answer
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

    bool isDownloading() const { return m_state == State::Downloading; }

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
    /// The service could not be asked, or did not answer in time.
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
    enum class State {
        Idle,        ///< nothing is on its way; an offer may stand
        Downloading, ///< by the downloader
        Cancelled,   ///< a download that was given up comes to its end
        Complete,    ///< the installer has arrived whole, and verifies
    };

    void take(const UpdateOffer &offer);
    void tell(const UpdateOffer &offer);
    void ask(const QString &text, const QString &button1, const QString &button2, void (ZRUpdater::*first)(),
             void (ZRUpdater::*second)());
    void startDownload();
    bool acceptInstaller() const;
    void release();

    Setup m_setup;
    QPointer<UpdatePrompt> m_prompt;
    QPointer<QNetworkAccessManager> m_network;
    std::unique_ptr<Alarm> m_ownAlarm;
    QPointer<QDownloader> m_downloader;
    UpdateOffer m_offer; // that stands; while a download runs and after it, what is downloaded
    QString m_toldVersion;
    State m_state = State::Idle;
    bool m_installOnQuit = false;
};
