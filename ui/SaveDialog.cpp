#include "ui/SaveDialog.h"

#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "ui/UiLog.h"

#include <QLineEdit>
#include <QMouseEvent>

namespace
{

constexpr QSize panelSize(304, 137);
constexpr int failureHeight = 22; // the line's, when there is one
constexpr int buttonsTop = 105;

const QLatin1String captionStyle("QLabel { color :#414141;}");
const QLatin1String failureStyle("QLabel { color :#b3261e;}");
const QLatin1String nameStyle("QLabel { color : black;  background-color:white}");

// The field's own sheet is one for labels: its ground would be the page's.
constexpr char panelStyle[] = "QLineEdit { color: black; background-color: white; border: 1px solid #bdbdc9;"
                              "border-radius: 3px; padding: 0 4px; selection-color: white;"
                              "selection-background-color: @accent; }"
                              "QLineEdit:focus { border-color: @accent; }";

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
    addText(tr("Save as:"), {10, 32, 284, 24}, captionStyle, textFont(12, 50));

    m_name->setGeometry(10, 58, 284, 34);
    m_name->setPlaceholderText(tr("type a name"));
    m_name->setStyleSheet(nameStyle);
    m_name->setFont(textFont(16, 50));
    m_name->setAccessibleName(tr("Name of the mapping"));
    m_name->setToolTip(tr("The name under which the menu lists it"));

    m_cancel = addPicture<ClickableLabel>(cancelPicture, {10, buttonsTop, 87, 22}, tr("Cancel"),
                                          tr("Saves nothing"));
    m_ok = addPicture<ClickableLabel>(okPicture, {205, buttonsTop, 87, 22}, tr("OK"),
                                      tr("Adds it to your own mappings; others of the same name stay"));
    m_failure = addText(QString(), {10, 97, 284, failureHeight}, failureStyle,
                        Look::font(Look::Face::DialogStrong, 10));
    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->hide();
    connect(m_ok, &ClickableLabel::clicked, this, &SaveDialog::accept);
    connect(m_cancel, &ClickableLabel::clicked, this, &SaveDialog::cancel);
    connect(m_name, &QLineEdit::returnPressed, this, &SaveDialog::accept);
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
    layOut(false);
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
    layOut(false);
    const QString name = m_name->text();
    Q_EMIT saveCurrentMap(name);
    if (!m_failure->isHidden()) {
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
    FittingText::show(m_failure, tr("Not saved: %1").arg(words));
    layOut(true);
}

void SaveDialog::layOut(bool withFailure)
{
    const int more = withFailure ? failureHeight : 0;
    m_failure->setVisible(withFailure);
    m_cancel->move(m_cancel->x(), buttonsTop + more);
    m_ok->move(m_ok->x(), buttonsTop + more);
    setPanelHeight(panelSize.height() + more);
}

void SaveDialog::restoreButtons()
{
    m_ok->setStyleSheet(pictureSheet(okPicture, false));
    m_cancel->setStyleSheet(pictureSheet(cancelPicture, false));
}
