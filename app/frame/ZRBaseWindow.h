#pragma once

#include <QWidget>

class QLabel;
class QGraphicsBlurEffect;
class QProgressBar;
class ZRUpdater;

/// The frame that the pages share: a header with the logo, the version and three links; a blur for the time
/// that a question is up; and two panels in the header's place that follow the updater from the offer to the
/// download.
///
/// Each page has its own; an update that is offered appears on all of them, and is acted on once.
class ZRBaseWindow : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ZRBaseWindow)

public:
    /// Follows @p updater, which stays the caller's and must outlive this object; null for none.
    explicit ZRBaseWindow(ZRUpdater *updater, QWidget *parent = nullptr);

public Q_SLOTS:
    void setBlur(bool on);
    void updateButtonClicked();
    void cancelButtonClicked();
    void onUpdateAvailable(const QString &version);
    void onDownloading(int percent);
    void onDownloadStart();
    void onDownloadCanceled();
    void onDownloadComplete();

private:
    void buildHeader();
    void buildUpdatePanel();
    void buildDownloadPanel();
    void followUpdater();
    void bringToFront(QWidget *panel);

    ZRUpdater *m_updater;
    QWidget *m_header;
    QWidget *m_updatePanel;
    QWidget *m_downloadPanel;
    QLabel *m_question = nullptr;
    QLabel *m_progressText = nullptr;
    QProgressBar *m_progress = nullptr;
    QGraphicsBlurEffect *m_blur = nullptr; // this widget's, created on first use
    bool m_silentDownload = false;         // one that nobody asked for took the offer's place
};
