#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class MappingSession;
class QMimeData;
class QWidget;
class ZRDialog;

/// Files that are dropped on the window are imported, as far as they are this computer's. Something that is
/// dragged out of the program itself is no file that comes in.
///
/// What went wrong is said in a message; what went well too, unless a page that says so itself is to be seen.
class FileDrop : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FileDrop)

public:
    static constexpr int mostFiles = 100; ///< of one drop

    /// Has @p window take drops from now on. @p page is the one that tells of imports. All must outlive this
    /// object.
    FileDrop(QWidget &window, const QWidget &page, MappingSession &mappings);
    ~FileDrop() override;

    /// Imports @p files, and says what became of them.
    void import(const QStringList &files);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &m_window;
    const QWidget &m_page;
    MappingSession &m_mappings;
    QPointer<ZRDialog> m_message; // a child of the window
};
