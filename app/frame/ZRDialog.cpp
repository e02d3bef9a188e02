#include "app/frame/ZRDialog.h"

#include "app/frame/DragToMove.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace
{

const QLatin1String messageStyle(
    "QLabel {color: #2d2d2d; background-color: #f9f9f9; border: 1px solid #eaeaea;border-radius: 2px;}");
const QLatin1String textStyle("QLabel { color: #2d2d2d;}");
const QLatin1String buttonStyle(
    "QPushButton {background-color: #5342d9;border: 1px #5342d9;border-radius: 2px;color: #ffffff;}"
    "QPushButton:focus:pressed {background-color: #313f94;border: 1px #313f94;border-radius: 2px;color: "
    "#ffffff;}"
    "QPushButton:disabled {background-color: #7489e5;border: 1px #7489e5;border-radius: 2px;color: #ffffff;}"
    "QPushButton:hover {background-color: #3549c6;border: 1px #3549c6;border-radius: 2px;color: #ffffff;}");

} // namespace

ZRDialog::ZRDialog(const QString &message, const QString &button1, const QString &button2, QWidget *parent)
    : QWidget(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    // Closing a message while the main window is hidden must not end the program.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("background-color: #ffffff;"));
    setWindowTitle(tr("Veltrix"));
    setFixedWidth(420);

    auto *title = new QLabel(tr("Veltrix"), this);
    title->setObjectName(QStringLiteral("title"));
    title->setStyleSheet(textStyle);
    title->setFont(Look::font(Look::Face::Page, 14));

    title->setCursor(Qt::SizeAllCursor);
    new DragToMove(title);

    auto *text = new QLabel(message, this);
    text->setObjectName(QStringLiteral("message"));
    text->setStyleSheet(messageStyle);
    text->setFont(Look::font(Look::Face::Page, 12));
    text->setWordWrap(true);
    text->setMargin(12);
    text->setTextFormat(Qt::PlainText);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 20);
    layout->setSpacing(14);
    layout->addWidget(title);
    layout->addWidget(text);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    layout->addLayout(buttons);

    m_button1 = addButton(button1);
    buttons->addWidget(m_button1);
    connect(m_button1, &QPushButton::clicked, this, &ZRDialog::button1Pressed);
    if (!button2.isEmpty()) {
        m_button2 = addButton(button2);
        buttons->addWidget(m_button2);
        connect(m_button2, &QPushButton::clicked, this, &ZRDialog::button2Pressed);
    }
    setAccessibleName(message);
}

QPushButton *ZRDialog::addButton(const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setStyleSheet(buttonStyle);
    button->setFont(Look::font(Look::Face::Page, 12));
    button->setMinimumSize(100, 32);
    (new FocusFrame(button))->showForEveryFocus();
    return button;
}

void ZRDialog::button1Pressed()
{
    hide();
    Q_EMIT onButton1Pressed();
}

void ZRDialog::button2Pressed()
{
    hide();
    Q_EMIT onButton2Pressed();
}

void ZRDialog::showEvent(QShowEvent *event)
{
    resize(width(), layout()->heightForWidth(width()));
    const QWidget *over = parentWidget() ? parentWidget()->window() : nullptr;
    const QRect area = over ? over->geometry() : QGuiApplication::primaryScreen()->geometry();
    move(area.center() - rect().center());
    QWidget::showEvent(event);
    raise();
    if (!testAttribute(Qt::WA_ShowWithoutActivating)) {
        activateWindow();
    }
    m_button1->setFocus(); // for when the window has the keys
}

void ZRDialog::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (m_button2) {
            button2Pressed();
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_button2 && m_button2->hasFocus()) {
            button2Pressed();
        } else {
            button1Pressed();
        }
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ZRDialog::closeEvent(QCloseEvent *event)
{
    // The window manager's close is the careful answer: the second button, where there is one.
    QWidget::closeEvent(event);
    if (m_button2) {
        button2Pressed();
    }
}
