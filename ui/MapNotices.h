#pragma once

#include <QObject>

class ClickableLabel;
class QLabel;

/// The lines under the mapping selector: how the library's update goes, and whether what the page shows is
/// lost with the program's end.
class MapNotices : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MapNotices)

public:
    /// The lines are @p page's, as is this object. Neither shows at first.
    explicit MapNotices(QWidget *page);

    void showUpdating();
    void endUpdating(bool newMaps);
    void hideUpdate();

    /// Whether the working copy holds what the page shows.
    void setKept(bool kept);

    QWidget *keepButton() const;

Q_SIGNALS:
    /// The user wants what the page shows to be written to the working copy.
    void keep();

private:
    QLabel *m_update;
    QLabel *m_notKept;
    ClickableLabel *m_keep;
};
