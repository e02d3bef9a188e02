#pragma once

#include <QBasicTimer>
#include <QMenu>
#include <QPoint>
#include <QString>

#include <optional>

/// The submenu that lists mappings, many more of them than there is room for.
///
/// A notch of the wheel moves it by three entries, and nothing opens under the resting mouse meanwhile. What
/// is typed goes to the next entry that begins so, upper or lower case, also while an entry's own menu is
/// open.
class MappingList : public QMenu
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MappingList)

public:
    MappingList(const QString &title, QWidget *parent);
    ~MappingList() override = default;

    /// Has the list take what is typed while @p entryMenu, an entry's own, is open, and the wheel over the
    /// list.
    void takeInputFrom(QMenu &entryMenu);

protected:
    void wheelEvent(QWheelEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool takeTyped(const QKeyEvent &event);
    QAction *nextThatBegins(const QString &text) const;
    void highlight(QAction &entry);

    QString m_typed;
    QBasicTimer m_typing;            // runs while what comes belongs to what was typed
    std::optional<QPoint> m_resting; // where the mouse is since the wheel was turned; nothing once it moves
    int m_turned = 0;                // of the wheel, in its units, what no line has been scrolled for yet
};
