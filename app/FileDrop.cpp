#include "app/FileDrop.h"

#include "app/frame/ZRDialog.h"
#include "mapping/MappingSession.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace
{

QStringList localFiles(const QMimeData &data)
{
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
        }
    }
    return files;
}

} // namespace

FileDrop::FileDrop(QWidget &window, const QWidget &page, MappingSession &mappings)
    : m_window(window)
    , m_page(page)
    , m_mappings(mappings)
{
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

FileDrop::~FileDrop() = default;

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
        QTimer::singleShot(0, this, [this, files] { import(files); });
    }
    return true;
}

void FileDrop::import(const QStringList &files)
{
    QStringList sentences;
    bool allWell = true;
    for (const QString &file : files) {
        const ImportedMappings::Outcome outcome = m_mappings.importFile(file);
        sentences.append(outcome.sentence);
        allWell = allWell && !outcome.names.isEmpty();
    }
    if (allWell && files.size() == 1 && m_page.isVisible()) {
        return;
    }
    if (m_message) {
        m_message->hide();
        m_message->deleteLater();
    }
    m_message = new ZRDialog(sentences.join(QLatin1Char('\n')), tr("OK"), QString(), &m_window);
    m_message->show();
}
