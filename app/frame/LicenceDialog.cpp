#include "app/frame/LicenceDialog.h"

#include "app/frame/Look.h"

#include <QFile>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

constexpr char sheet[] =
    "QDialog { background-color: #ffffff; }"
    "QPlainTextEdit { background-color: #f9f9f9; color: #2d2d2d; border: 1px solid #8a8a8a; }"
    "QPlainTextEdit:focus { border: 1px solid @accent; }"
    "QPushButton { background-color: @accent; color: #ffffff; border: 2px solid @accent;"
    " border-radius: 2px; padding: 4px 24px; }"
    "QPushButton:hover { background-color: #3549c6; }"
    "QPushButton:focus { border-color: #2d2d2d; }";

} // namespace

LicenceDialog::LicenceDialog(QWidget *parent)
    : QDialog(parent)
{
    // Closing it while the main window is hidden must not end the program.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_DeleteOnClose);
    setStyleSheet(Look::accented(sheet));
    setWindowTitle(tr("Licences"));
    resize(720, 520);

    auto *page = new QPlainTextEdit(text(), this);
    page->setReadOnly(true);
    page->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    page->setTabChangesFocus(true);
    page->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    page->setAccessibleName(tr("Licences"));
    auto *close = new QPushButton(tr("Close"), this);
    close->setFont(Look::font(Look::Face::Page, 12));
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(page);
    layout->addWidget(close, 0, Qt::AlignRight);
}

// Where no window manager gives the keys to what comes last.
void LicenceDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    raise();
    activateWindow();
}

QString LicenceDialog::text()
{
    QFile file(QStringLiteral(":/licences.txt"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
