#include "app/FileDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace
{

QStringList localFiles(const QMimeData &data)
{
    QStringList files;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
        }
    }
    return files;
}

} // namespace

FileDrop::FileDrop(QWidget &window, std::function<void(const QStringList &)> take)
    : m_take(std::move(take))
{
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop) {
        return false;
    }
    auto *drop = static_cast<QDropEvent *>(event);
    const QStringList files = drop->source() == nullptr ? localFiles(*drop->mimeData()) : QStringList();
    if (files.isEmpty() || files.size() > mostFiles) {
        event->ignore();
        return true;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        // Whoever has dragged them waits for the end of this event.
        QTimer::singleShot(0, this, [this, files] { m_take(files); });
    }
    return true;
}
