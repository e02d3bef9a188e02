#pragma once

#include <QMap>
#include <QObject>
#include <QString>

class ClickableLabel;
class QLabel;

/// The lines under the mapping selector: how the library's update goes, whether what the page shows is lost
/// with the program's end, and what could not be written.
class MapNotices : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MapNotices)

public:
    /// What of the page's can fail.
    enum class Task { Keep, Save, Delete, LaunchOnStartup, Settings };

    /// The lines are @p page's, as is this object. None shows at first.
    explicit MapNotices(QWidget *page);

    void showUpdating();
    void endUpdating(bool newMaps);
    void hideUpdate();

    /// Whether the working copy holds what the page shows.
    void setKept(bool kept);

    /// Whether the working copy holds all but the knob's MIDI fields: keeping again changes nothing.
    void setKnobEnds(bool ends);

    /// Says in words how @p task failed, until it does not: an empty text.
    void setFailure(Task task, const QString &words);

    QWidget *keepButton() const;

Q_SIGNALS:
    /// The user wants what the page shows to be written to the working copy.
    void keep();

private:
    void showKept();

    QLabel *m_update;
    QLabel *m_notKept;
    ClickableLabel *m_keep;
    QLabel *m_failure;
    QMap<Task, QString> m_failures;
    bool m_kept = true;
    bool m_knobEnds = false;
};
