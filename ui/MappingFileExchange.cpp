#include "ui/MappingFileExchange.h"

#include "app/frame/ZRDialog.h"
#include "mapping/ListInWords.h"
#include "mapping/MappingExport.h"
#include "mapping/MappingSession.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDrag>
#include <QFileDialog>
#include <QMimeData>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QUrl>

MappingFileExchange::MappingFileExchange(MappingSession &mappings, QWidget *page)
    : QObject(page)
    , m_mappings(mappings)
    , m_page(page)
    , m_export(new QAction(tr("Export\u2026"), this))
    , m_import(new QAction(tr("Import\u2026"), this))
{
    connect(m_export, &QAction::triggered, this, &MappingFileExchange::askAndExport);
    connect(m_import, &QAction::triggered, this, &MappingFileExchange::askAndImport);
    m_style.applyTo(m_menu);
    m_menu.addActions({m_export, m_import});
    connect(&m_menu, &QMenu::aboutToShow, this, [this] { Q_EMIT choosing(true); });
    // It hides before the entry that was chosen is told.
    connect(&m_menu, &QMenu::aboutToHide, this, &MappingFileExchange::tellChoosing, Qt::QueuedConnection);
    page->installEventFilter(this);
}

MappingFileExchange::~MappingFileExchange() = default;

void MappingFileExchange::addMenuTo(QWidget *widget)
{
    widget->addActions({m_export, m_import}); // where screen readers find them
    widget->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(widget, &QWidget::customContextMenuRequested, this,
            [this, widget](const QPoint &place) { m_menu.popup(widget->mapToGlobal(place)); });
}

void MappingFileExchange::addDragTo(QWidget *widget)
{
    widget->installEventFilter(this);
}

bool MappingFileExchange::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (widget == m_page) {
        if (event->type() == QEvent::Hide) {
            m_menu.close(); // the page slides away under it when the device is unplugged
        }
        return false;
    }
    const auto mouse = [event] { return static_cast<QMouseEvent *>(event); };
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_pressed = mouse()->button() == Qt::LeftButton ? std::optional(mouse()->pos()) : std::nullopt;
        return m_pressed.has_value(); // or it would begin to move the window
    case QEvent::MouseMove:
        if (!m_pressed) {
            return false;
        }
        if ((mouse()->pos() - *m_pressed).manhattanLength() >= QApplication::startDragDistance()) {
            m_pressed.reset();
            drag(widget);
        }
        return true;
    case QEvent::MouseButtonRelease:
        m_pressed.reset();
        return false;
    default:
        return false;
    }
}

QString MappingFileExchange::name() const
{
    return m_mappings.name().isEmpty() ? QLatin1String(nameForNone) : m_mappings.name();
}

std::unique_ptr<ZRButtonMap> MappingFileExchange::inUse() const
{
    auto map = std::make_unique<ZRButtonMap>(name());
    map->actions = m_mappings.actions();
    return map;
}

bool MappingFileExchange::write(const ZRButtonMap &map, const QString &path)
{
    const FileResult result = MappingExport::write(map, path);
    if (!result) {
        say(tr("\u201c%1\u201d was not exported: %2.").arg(map.name, result.inWords()));
    }
    return bool(result);
}

void MappingFileExchange::exportTo(const QString &path)
{
    write(*inUse(), path);
}

void MappingFileExchange::setAsking(bool asking)
{
    m_asking = asking;
    tellChoosing();
}

void MappingFileExchange::tellChoosing()
{
    Q_EMIT choosing(m_asking || m_menu.isVisible());
}

QString MappingFileExchange::fileForDrag()
{
    if (!m_folder) {
        m_folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/veltrix-XXXXXX"));
    }
    const QString path = m_folder->filePath(MappingExport::fileName(name()));
    return write(*inUse(), path) ? path : QString();
}

void MappingFileExchange::drag(QWidget *from)
{
    const QString path = fileForDrag();
    if (path.isEmpty()) {
        return;
    }
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(path)});
    auto *drag = new QDrag(from);
    drag->setMimeData(data);
    drag->setPixmap(from->grab());
    drag->exec(Qt::CopyAction);
}

void MappingFileExchange::askAndExport()
{
    setAsking(true);
    const auto map = inUse(); // the one that the dialog names, whatever happens while it is open
    const QString path = QFileDialog::getSaveFileName(
        m_page, tr("Export \u201c%1\u201d").arg(map->name),
        QDir::home().filePath(MappingExport::fileName(map->name)), tr("Mappings (*.xml)"));
    if (!path.isEmpty()) {
        write(*map, path);
    }
    setAsking(false);
}

void MappingFileExchange::askAndImport()
{
    setAsking(true);
    const QStringList files = QFileDialog::getOpenFileNames(m_page, tr("Import mappings"), QDir::homePath(),
                                                            tr("Mappings (*.xml)"));
    if (!files.isEmpty()) {
        import(files);
    }
    setAsking(false);
}

void MappingFileExchange::import(const QStringList &files)
{
    QStringList faults; // are told first: the message names a few only
    QStringList successes;
    bool toldByThePage = files.size() == 1 && m_page->isVisible();
    for (const QString &file : files) {
        const ImportedMappings::Outcome outcome = m_mappings.importFile(file);
        (outcome.names.isEmpty() ? faults : successes).append(outcome.sentence);
        toldByThePage = toldByThePage && !outcome.names.isEmpty() && !outcome.forPrograms;
    }
    if (!toldByThePage) {
        say(ListInWords::lines(faults + successes));
    }
}

void MappingFileExchange::say(const QString &message)
{
    if (m_message) {
        m_message->hide();
        m_message->deleteLater();
    }
    m_message = new ZRDialog(message, tr("OK"), QString(), m_page);
    m_message->show();
}
