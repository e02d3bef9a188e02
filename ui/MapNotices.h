#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QTimer>

class ClickableLabel;
class QLabel;

/// The lines under the mapping selector: how the library's update goes, what the user did last, whether what
/// the page shows is lost with the program's end, and what could not be written.
class MapNotices : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MapNotices)

public:
    /// What of the page's can fail.
    enum class Task { Keep, Save, Delete, TakeBack, Programs, LaunchOnStartup, Settings };

    /// A sentence with a name in it, at "%1". A long name is shown shortened.
    struct Words {
        QString sentence;
        QString name;
    };

    static constexpr int stepShown = 10000; ///< ms

    /// The lines are @p page's, as is this object. None shows at first.
    explicit MapNotices(QWidget *page);

    void showUpdating();
    void endUpdating(bool newMaps);
    void hideUpdate();

    /// Whether the working copy holds what the page shows.
    void setKept(bool kept);

    /// Whether the working copy holds all but the knob's MIDI fields: keeping again changes nothing.
    void setKnobEnds(bool ends);

    /// Says for stepShown what the user has done last; @p offersUndo shows "Undo" as long, which stays while
    /// the user is about to press it. As long as the working copy does not hold what the page shows, and up
    /// to the next step, @p untilKept is said in its place: it may lead to "Keep".
    void sayStep(const Words &words, bool offersUndo, const Words &untilKept = {});

    /// The next step has been done, or the last is gone.
    void forgetStep();

    /// Says in words how @p task failed, until it does not: an empty text.
    void setFailure(Task task, const QString &words);

    QWidget *keepButton() const;
    QWidget *undoButton() const;

Q_SIGNALS:
    /// The user wants what the page shows to be written to the working copy.
    void keep();

    /// The user wants the last step never to have been.
    void undo();

private:
    void buildLink(ClickableLabel &link, const QString &text, const QString &help);
    void showKept();
    void show(const Words &words);
    void endStep();

    QLabel *m_update;
    QLabel *m_notKept;
    ClickableLabel *m_keep;
    ClickableLabel *m_undo;
    QLabel *m_failure;
    Words m_step; // no sentence: nothing is said
    Words m_untilKept;
    QTimer m_stepEnd;
    QMap<Task, QString> m_failures;
    bool m_kept = true;
    bool m_knobEnds = false;
};
