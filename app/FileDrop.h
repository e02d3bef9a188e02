#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QWidget;

/// What takes the files that are dropped on a window, as far as they are this computer's. Something that is
/// dragged out of the program itself is no file that comes in.
class FileDrop : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FileDrop)

public:
    static constexpr int mostFiles = 100; ///< of one drop; more are not taken

    /// Has @p window, which must outlive this object, take drops from now on. @p take gets the files' paths
    /// as soon as the drop is over.
    FileDrop(QWidget &window, std::function<void(const QStringList &)> take);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::function<void(const QStringList &)> m_take;
};
