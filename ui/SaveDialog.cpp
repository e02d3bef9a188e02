#include "ui/SaveDialog.h"

#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "mapping/XmlMappingReader.h"
#include "ui/UiLog.h"

#include <QLineEdit>
#include <QMouseEvent>

namespace
{

constexpr QSize panelSize(304, 137);
constexpr int buttonsTop = 105;

const QLatin1String captionStyle("QLabel { color :#414141;}");
const QLatin1String failureStyle("QLabel { color :#b3261e;}");
const QLatin1String nameStyle("QLabel { color : black;  background-color:white}");

// The field's own sheet is one for labels: its ground would be the page's.
constexpr char panelStyle[] = "QLineEdit { color: black; background-color: white; border: 1px solid #8a8a8a;"
                              "border-radius: 3px; padding: 0 4px; selection-color: white;"
                              "selection-background-color: @accent; }"
                              "QLineEdit:focus { border: 2px solid @accent; padding: 0 3px; }";

const QString okPicture = QStringLiteral("ok");
const QString cancelPicture = QStringLiteral("cancel");

QFont textFont(int pointSize, int weight)
{
    return Look::font(Look::Face::DialogLight, pointSize, weight);
}

} // namespace

SaveDialog::SaveDialog(QWidget *parent)
    : OverlayDialog(panelSize, GrabMouse, parent)
    , m_ok(nullptr)
    , m_cancel(nullptr)
    , m_name(new QLineEdit(panel()))
{
    const QString title = tr("Save Mapping");
    setWindowTitle(title);
    setAccessibleName(title);
    panel()->setStyleSheet(Look::accented(panelStyle));
    addText(title, {0, 6, panelSize.width(), 24}, captionStyle, textFont(12, 75))
        ->setAlignment(Qt::AlignCenter);
    addText(tr("Save as:"), {10, 29, 284, 22}, captionStyle, textFont(12, 50));

    m_name->setGeometry(10, 52, 284, 33);
    m_name->setPlaceholderText(tr("type a name"));
    m_name->setStyleSheet(nameStyle);
    m_name->setFont(textFont(16, 50));
    m_name->setAccessibleName(tr("Name of the mapping"));
    m_name->setToolTip(tr("The name under which the menu lists it"));

    m_cancel = addPicture<ClickableLabel>(cancelPicture, {10, buttonsTop, 87, 22}, tr("Cancel"),
                                          tr("Saves nothing"));
    m_ok = addPicture<ClickableLabel>(okPicture, {205, buttonsTop, 87, 22}, tr("OK"),
                                      tr("Adds it to your own mappings; others of the same name stay"));
    m_line = addText(QString(), {10, 86, 284, 18}, captionStyle, Look::font(Look::Face::DialogStrong, 9));
    m_line->setObjectName(QStringLiteral("failure"));
    m_line->hide();
    connect(m_ok, &ClickableLabel::clicked, this, &SaveDialog::accept);
    connect(m_cancel, &ClickableLabel::clicked, this, &SaveDialog::cancel);
    connect(m_name, &QLineEdit::returnPressed, this, &SaveDialog::accept);
    connect(m_name, &QLineEdit::textChanged, this, &SaveDialog::showConsequence);
    setTabOrder(m_name, m_cancel);
    setTabOrder(m_cancel, m_ok);
}

void SaveDialog::show()
{
    showNormal();
}

void SaveDialog::showEvent(QShowEvent *event)
{
    OverlayDialog::showEvent(event);
    if (event->spontaneous()) {
        return;
    }
    restoreButtons();
    m_name->clear();
    m_name->setText(QStringLiteral("Untitled")); // a name, which is stored: the same in every language
    m_name->selectAll();
    m_name->setFocus();
}

void SaveDialog::mousePressEvent(QMouseEvent *event)
{
    if (isOn(m_ok, event->pos())) {
        accept();
    } else if (isOn(m_cancel, event->pos())) {
        cancel();
    }
}

void SaveDialog::mouseReleaseEvent(QMouseEvent *event)
{
    OverlayDialog::mouseReleaseEvent(event);
    restoreButtons();
}

void SaveDialog::accept()
{
    m_ok->setStyleSheet(pictureSheet(okPicture, true));
    m_failed = false;
    const QString name = m_name->text();
    Q_EMIT saveCurrentMap(name);
    if (m_failed) {
        restoreButtons();
        return;
    }
    qCInfo(lcUi).noquote().nospace() << "saved Map: " << name;
    hide();
}

void SaveDialog::cancel()
{
    m_cancel->setStyleSheet(pictureSheet(cancelPicture, true));
    hide();
}

void SaveDialog::showFailure(const QString &words)
{
    m_failed = true;
    showLine(tr("Not saved: %1").arg(words), failureStyle);
}

// Said before it is done; nothing is in the way.
void SaveDialog::showConsequence(const QString &name)
{
    if (name.isEmpty()) {
        showLine(tr("It will be listed as '%1'.").arg(XmlMappingReader::nameForNone()), captionStyle);
    } else if (m_listed && m_listed(name)) {
        showLine(tr("This name is taken: both will be listed."), captionStyle);
    } else {
        m_line->hide();
    }
    m_name->setAccessibleDescription(m_line->isHidden() ? QString() : m_line->accessibleName());
}

void SaveDialog::showLine(const QString &text, const QString &style)
{
    m_line->setStyleSheet(style);
    FittingText::show(m_line, text);
    m_line->show();
}

void SaveDialog::restoreButtons()
{
    m_ok->setStyleSheet(pictureSheet(okPicture, false));
    m_cancel->setStyleSheet(pictureSheet(cancelPicture, false));
}
