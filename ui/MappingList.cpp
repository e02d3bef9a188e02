#include "ui/MappingList.h"

#include <QKeyEvent>
#include <QTimerEvent>
#include <QWheelEvent>

namespace
{

// The toolkit scrolls by one line, and there is a separator after each entry.
constexpr int linesPerNotch = 3 * 2;
constexpr int unitsPerLine = QWheelEvent::DefaultDeltasPerStep / linesPerNotch;

constexpr int typingPause = 1000; // ms

} // namespace

MappingList::MappingList(const QString &title, QWidget *parent)
    : QMenu(title, parent)
{
}

void MappingList::takeInputFrom(QMenu &entryMenu)
{
    entryMenu.installEventFilter(this);
}

void MappingList::wheelEvent(QWheelEvent *event)
{
    m_resting = event->globalPosition().toPoint();
    QAction *entry = activeAction();
    if (entry != nullptr && entry->menu() != nullptr) {
        entry->menu()->hide();
    }
    const int delta = event->angleDelta().y();
    if ((delta > 0) != (m_turned > 0)) {
        m_turned = 0; // back again
    }
    m_turned += delta;
    for (; qAbs(m_turned) >= unitsPerLine; m_turned -= m_turned > 0 ? unitsPerLine : -unitsPerLine) {
        QMenu::wheelEvent(event);
    }
}

// A menu that closes below the mouse makes a movement of it that there was not.
void MappingList::mouseMoveEvent(QMouseEvent *event)
{
    if (m_resting != event->globalPos()) {
        m_resting.reset();
        QMenu::mouseMoveEvent(event);
    }
}

void MappingList::keyPressEvent(QKeyEvent *event)
{
    if (takeTyped(*event)) {
        event->accept();
    } else {
        QMenu::keyPressEvent(event);
    }
}

// While an entry's menu is open, that is given all input, the wheel's over the list as well.
bool MappingList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && takeTyped(*static_cast<QKeyEvent *>(event))) {
        return true;
    }
    if (event->type() == QEvent::Wheel) {
        const auto *wheel = static_cast<QWheelEvent *>(event);
        const QPoint place = mapFromGlobal(wheel->globalPosition().toPoint());
        if (rect().contains(place)) {
            QWheelEvent here(place, wheel->globalPosition(), wheel->pixelDelta(), wheel->angleDelta(),
                             wheel->buttons(), wheel->modifiers(), wheel->phase(), wheel->inverted(),
                             wheel->source());
            wheelEvent(&here);
            return true;
        }
    }
    return QMenu::eventFilter(watched, event);
}

bool MappingList::takeTyped(const QKeyEvent &event)
{
    const QString text = event.text();
    const bool typed = !text.isEmpty() && text.at(0).isPrint() &&
                       !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!typed || (text == QLatin1String(" ") && !m_typing.isActive())) { // a blank alone chooses
        return false;
    }
    m_typed = m_typing.isActive() ? m_typed + text : text;
    m_typing.start(typingPause, this);
    QAction *found = nextThatBegins(m_typed);
    if (found == nullptr && m_typed.count(text, Qt::CaseInsensitive) == m_typed.size()) {
        found = nextThatBegins(text); // the same letter again: the next entry with it
    }
    if (found != nullptr) {
        highlight(*found);
    }
    return true;
}

// From the chosen entry on, which itself is the last to be looked at when a word begins.
QAction *MappingList::nextThatBegins(const QString &text) const
{
    const QList<QAction *> all = actions();
    const int from = all.indexOf(activeAction()) + (text.size() > 1 ? 0 : 1);
    for (int i = 0; i < all.size(); ++i) {
        QAction *entry = all.at((from + i + all.size()) % all.size());
        QString name = entry->text();
        name.replace(QLatin1String("&&"), QLatin1String("&"));
        if (!entry->isSeparator() && entry->isEnabled() && name.startsWith(text, Qt::CaseInsensitive)) {
            return entry;
        }
    }
    return nullptr;
}

// Without its menu for the moment, or that would open and take what is typed next.
void MappingList::highlight(QAction &entry)
{
    if (activeAction() == &entry) {
        return;
    }
    // A step of the keyboard's closes for good what is open; otherwise the toolkit comes back to it.
    QKeyEvent step(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QMenu::keyPressEvent(&step);
    QMenu *menu = entry.menu();
    entry.setMenu(nullptr);
    setActiveAction(&entry);
    entry.setMenu(menu);
}

void MappingList::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_typing.timerId()) {
        m_typing.stop();
    } else if (!m_resting) { // the toolkit's own open and close what is under the mouse
        QMenu::timerEvent(event);
    }
}

void MappingList::hideEvent(QHideEvent *event)
{
    m_typing.stop();
    m_turned = 0;
    m_resting.reset();
    QMenu::hideEvent(event);
}
