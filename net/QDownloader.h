#pragma once

#include <QFile>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QNetworkAccessManager;

/// Fetches one file over HTTP and writes it to a local path while it arrives.
///
/// Each download ends in exactly one dowloadFinished(). What has been written stays on the disk, also after a
/// failure. May be used again once a download has ended; one that is started while another runs ends the
/// other without a report. GUI thread only.
class QDownloader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(QDownloader)

public:
    /// A server that sends nothing for this long counts as gone.
    static constexpr int defaultStallTimeout = 60000; ///< ms

    /// A download that takes longer as a whole is given up, however it drips.
    static constexpr int defaultDeadline = 3'600'000; ///< ms

    explicit QDownloader(QObject *parent = nullptr);
    ~QDownloader() override;

    /// Starts fetching @p url into @p filePath; an existing file is emptied at once. A file that cannot be
    /// opened or written shows as a failed end. Redirects are not followed: an answer that points elsewhere
    /// is a failure, as is an address that is not HTTP.
    void download(const QString &url, const QString &filePath);

    bool isRunning() const { return m_reply != nullptr; }
    void setStallTimeout(int milliseconds) { m_stallTimeout = milliseconds; }
    void setDeadline(int milliseconds) { m_deadline.setInterval(milliseconds); }

    /// Has the file created new, for this user alone: a file or link that is there already makes the download
    /// fail.
    void setCreateNew(bool createNew) { m_createNew = createNew; }

    /// Has a download fail, as soon as its head is there, if neither a length nor chunks will mark its end:
    /// an early end could not be told from the regular one.
    void setMarkedEndRequired(bool required) { m_markedEndRequired = required; }

    /// Ends a download as failed when more than @p bytes arrive or are announced; 0, the default, is no
    /// limit.
    void setMaximumSize(qint64 bytes) { m_maximumSize = bytes; }

Q_SIGNALS:
    /// The end: true when the whole file has arrived and been written.
    void dowloadFinished(bool success);

    /// The fraction that has arrived, 0 to 1; negative when the server does not tell the length.
    void downloadProgress(float progress);

    /// To be emitted from outside: aborts the download, which then ends as failed.
    void cancelDownload();

public Q_SLOTS:
    void onDownloadProgress(qint64 received, qint64 total);
    void onFinished(QNetworkReply *reply);
    void onReadyRead();
    void onReplyFinished();

private:
    void openFile(const QString &filePath);
    void onHead();
    QString whatFailed(const QNetworkReply &reply) const;
    void abortWith(const QString &error);
    void closeFile();
    void forgetDownload();

    QNetworkAccessManager *m_manager;
    QPointer<QNetworkReply> m_reply;
    QPointer<QFile> m_file;
    QString m_error; // what went wrong on this side
    qint64 m_received = 0;
    qint64 m_maximumSize = 0;
    bool m_createNew = false;
    bool m_markedEndRequired = false;
    int m_stallTimeout = defaultStallTimeout;
    QTimer m_deadline;
};
