#include "ui/OverlayDialog.h"

#include "app/frame/FittingText.h"
#include "app/frame/ZRBaseWindow.h"
#include "engine/platform/Desktop.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QToolTip>
#include <QWindow>

namespace
{

constexpr QSize dialogSize(900, 650);

// Somebody else may hold the mouse or the keyboard for a moment, a menu that is just closing for example.
constexpr int retryInterval = 50; // ms
constexpr int mostAttempts = 10;

// A place without any paint would let clicks through to the window behind on some systems.
constexpr QColor veil(0, 0, 0, 40);

constexpr char rootStyle[] = "OverlayDialog { background: transparent; }"
                             "QWidget#panel { background-color: white; }"
                             "QLabel { background-color: transparent; }"
                             "FocusFrame { qproperty-colour: @accent; }";

QSize primaryScreenSize()
{
    return QGuiApplication::primaryScreen()->geometry().size();
}

// Where the main window stands: in the middle of the primary screen.
QPoint windowOnScreen(const QSize &screen)
{
    return {(screen.width() - dialogSize.width()) / 2, (screen.height() - dialogSize.height()) / 2};
}

} // namespace

OverlayDialog::OverlayDialog(const QSize &panelSize, Grabs grabs, QWidget *parent)
    : QWidget(parent, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_firstPanelSize(panelSize)
    , m_grabs(grabs)
    , m_panel(new QWidget(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    // Closing a dialog while the main window is hidden must not end the program.
    setAttribute(Qt::WA_QuitOnClose, false);
    setStyleSheet(Look::accented(rootStyle));
    setFixedSize(dialogSize);

    m_panel->setObjectName(QStringLiteral("panel"));
    m_panel->setAttribute(Qt::WA_StyledBackground);
    m_panel->setAutoFillBackground(true);
    m_panel->resize(panelSize);
    coverWindow();

    m_retry.setInterval(retryInterval);
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &OverlayDialog::tryAgain);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &QWidget::hide);
    if (auto *page = qobject_cast<ZRBaseWindow *>(parent)) {
        connect(this, &OverlayDialog::setBlur, page, &ZRBaseWindow::setBlur);
    }
}

OverlayDialog::~OverlayDialog()
{
    letGoOfInput();
}

QPoint OverlayDialog::panelOnScreen(const QSize &screenSize, const QSize &panelSize)
{
    // Right minus left: one less than the width, and so on.
    const QSize screen = screenSize - QSize(1, 1);
    const QSize extent = panelSize - QSize(1, 1);
    return {(screen.width() - extent.width()) / 2, (screen.height() - extent.height()) / 2};
}

QString OverlayDialog::pictureSheet(const QString &name, bool pressed)
{
    return QStringLiteral("background-image: url(:/buttons/%1_%2.png);").arg(name).arg(pressed ? 1 : 0);
}

void OverlayDialog::setPanelHeight(int height)
{
    m_panel->resize(m_panel->width(), height);
}

QLabel *OverlayDialog::addText(const QString &text, const QRect &place, const QString &style,
                               const QFont &font)
{
    return Look::addText(m_panel, text, place, style, font);
}

void OverlayDialog::addSubject(const QRect &place)
{
    m_subject = addText(QString(), place, QStringLiteral("QLabel { color :#6b6b6b;}"),
                        Look::font(Look::Face::Page, 9));
    m_subject->setObjectName(QStringLiteral("subject"));
    m_subject->setAlignment(Qt::AlignCenter);
}

void OverlayDialog::setSubject(const QString &subject)
{
    FittingText::show(m_subject, subject);
    setAccessibleDescription(subject);
}

bool OverlayDialog::isOn(const QWidget *onPanel, const QPoint &place) const
{
    return onPanel->rect().contains(onPanel->mapFrom(this, place));
}

void OverlayDialog::coverWindow()
{
    const QSize screen = primaryScreenSize();
    // The panel's place is one on the screen, and the window's too: so it has a place on the dialog, which
    // covers the window wherever that has been moved.
    m_panel->move(panelOnScreen(screen, m_firstPanelSize) - windowOnScreen(screen));
    move(m_window ? m_window->geometry().topLeft() : windowOnScreen(screen));
}

// Without a compositor the window shows through as a picture of it, taken when it has been dimmed.
void OverlayDialog::takeBackground()
{
    m_background = m_window && m_desktop && !m_desktop->isComposited() ? m_window->grab() : QPixmap();
}

void OverlayDialog::watch(bool on)
{
    if (m_window) {
        m_window->removeEventFilter(this);
        parentWidget()->removeEventFilter(this);
        m_window = nullptr;
    }
    if (on && parentWidget()) {
        m_window = parentWidget()->window();
        m_window->installEventFilter(this);
        parentWidget()->installEventFilter(this);
    }
}

// With the mouse held, the dialog is asked for the tool tips of all that lies on it.
bool OverlayDialog::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QWidget *under = childAt(help->pos());
        QToolTip::showText(help->globalPos(), under ? under->toolTip() : QString(), this);
        return true;
    }
    return QWidget::event(event);
}

void OverlayDialog::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    windowHandle()->installEventFilter(this);
    if (event->spontaneous()) {
        return;
    }
    watch(true);
    coverWindow();
    Q_EMIT setBlur(true);
    takeBackground();
    raise();
    activateWindow();
    if (windowHandle()->isExposed()) {
        takeInput();
    }
}

void OverlayDialog::hideEvent(QHideEvent *event)
{
    letGoOfInput();
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        watch(false);
        Q_EMIT hidden();
    }
}

void OverlayDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        hide();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void OverlayDialog::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!m_background.isNull()) {
        painter.drawPixmap(0, 0, m_background);
    }
    painter.fillRect(event->rect(), veil);
}

bool OverlayDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle()) {
        if (event->type() == QEvent::Expose) {
            if (windowHandle()->isExposed()) {
                takeInput();
            } else {
                letGoOfInput();
            }
        }
    } else if (event->type() == QEvent::Hide && !event->spontaneous()) {
        hide();
    } else if (event->type() == QEvent::Move && watched == m_window) {
        coverWindow();
    }
    return QWidget::eventFilter(watched, event);
}

void OverlayDialog::takeInput()
{
    if (m_holding || !isVisible()) {
        return;
    }
    m_holding = true;
    if (m_grabs & GrabMouse) {
        grabMouse();
    }
    if (m_grabs & GrabKeyboard) {
        grabKeyboard();
    }
    m_attempts = 0;
    tryAgain();
}

// The widget's own functions do not tell whether the system agreed; the window's do.
void OverlayDialog::tryAgain()
{
    const bool mouse = !(m_grabs & GrabMouse) || windowHandle()->setMouseGrabEnabled(true);
    const bool keyboard = !(m_grabs & GrabKeyboard) || windowHandle()->setKeyboardGrabEnabled(true);
    if (!(mouse && keyboard) && ++m_attempts < mostAttempts) {
        m_retry.start();
    }
}

void OverlayDialog::letGoOfInput()
{
    m_retry.stop();
    m_holding = false;
    if (QWidget::mouseGrabber() == this) {
        releaseMouse();
    }
    if (QWidget::keyboardGrabber() == this) {
        releaseKeyboard();
    }
}
