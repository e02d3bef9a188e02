#include "ui/ShortcutKey.h"

#include "app/frame/FittingText.h"
#include "engine/platform/Desktop.h"
#include "mapping/ShortCut.h"
#include "mapping/SpecialAction.h"
#include "ui/KeyNames.h"
#include "ui/UiLog.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

namespace
{

constexpr QSize panelSize(304, 137);

constexpr int windowsKey = 91;
constexpr int altKey = 18;
constexpr int ctrlKey = 17;
constexpr int f4Key = 115;
constexpr int noKey = -1;

constexpr char prompt[] = QT_TRANSLATE_NOOP("ShortcutKey", "type a shorcut"); // the spelling is deliberate

QFont dialogFont(int pointSize, int weight)
{
    return Look::font(Look::Face::DialogLight, pointSize, weight);
}

} // namespace

ShortcutKey::ShortcutKey(QWidget *parent)
    : OverlayDialog(panelSize, GrabMouse | GrabKeyboard, parent)
{
    const QString title = tr("Shorcut Key"); // the spelling is deliberate
    setWindowTitle(title);
    setAccessibleName(title);
    addText(title, {105, 8, 90, 16}, QStringLiteral("QLabel { color :#414141;}"),
            dialogFont(12, QFont::Bold));

    addSubject({10, 23, 284, 14});

    m_display = addText(QString(), {10, 63, 282, 32},
                        QStringLiteral("QLabel { color : black;  background-color:white}"),
                        dialogFont(16, QFont::Normal));
    m_display->setAlignment(Qt::AlignCenter);
    m_display->setTextFormat(Qt::PlainText);
    display(QLatin1String(prompt), tr(prompt));
    addButtons();
}

void ShortcutKey::addButtons()
{
    const auto add = [this](const QString &picture, const QRect &place, const QString &name,
                            const QString &toolTip) {
        return Button{addPicture<QLabel>(picture, place, name, toolTip), picture};
    };
    m_win = add(QStringLiteral("win_4"), {10, 38, 87, 15}, tr("Windows key"), tr("Adds the Windows key"));
    m_alt = add(QStringLiteral("win_7"), {108, 38, 87, 15}, tr("Alt"), tr("Adds Alt"));
    m_ctrl = add(QStringLiteral("win_6"), {205, 38, 87, 15}, tr("Ctrl"), tr("Adds Ctrl"));
    m_cancel = add(QStringLiteral("cancel"), {10, 105, 87, 22}, tr("Cancel"), tr("Changes nothing"));
    m_clear = add(QStringLiteral("clear"), {108, 105, 87, 22}, tr("Clear"), tr("Forgets the keys"));
    m_ok = add(QStringLiteral("ok"), {205, 105, 87, 22}, tr("OK"), tr("Takes the first three keys"));
}

void ShortcutKey::showAtRest()
{
    for (const Button &button : {m_win, m_alt, m_ctrl, m_cancel, m_clear, m_ok}) {
        button.label->setStyleSheet(pictureSheet(button.picture, false));
    }
}

void ShortcutKey::show(int type)
{
    m_type = type;
    showAtRest();
    QWidget::show();
}

void ShortcutKey::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        m_pressedHere.clear();
        display(QLatin1String(prompt), tr(prompt));
    }
    OverlayDialog::showEvent(event);
}

// No key combination is one of the program's own here.
bool ShortcutKey::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return OverlayDialog::event(event);
}

// Tab is a key like any other.
bool ShortcutKey::focusNextPrevChild(bool)
{
    return false;
}

void ShortcutKey::keyPressEvent(QKeyEvent *event)
{
    const quint32 native = event->nativeVirtualKey();
    const quint32 scan = event->nativeScanCode();
    const quint32 key = scan != 0 ? scan : native;
    if (isRepeat(*event) && !m_pressedHere.contains(key)) {
        return;
    }
    m_pressedHere.insert(key);
    const bool known = desktop() && (native != 0 || scan != 0);
    const int code = known ? desktop()->virtualKeyFromNative(native, scan) : event->key();
    // The toolkit's codes of some rare keys are the marks of a record that is no shortcut.
    shortCut record;
    record.key1 = code;
    if (code != 0 && actionKind(record) == ActionKind::Shortcut) {
        typeKey(code);
    } else {
        refuseKey();
    }
}

void ShortcutKey::keyReleaseEvent(QKeyEvent *event)
{
    m_released = {event->nativeScanCode(), event->timestamp()};
}

// A key that was down when the dialog opened repeats without ever having been pressed in it. The X server's
// repeats are a release and a press of one moment, and the toolkit cannot always tell them from others.
bool ShortcutKey::isRepeat(const QKeyEvent &event) const
{
    const bool sameMoment = event.timestamp() != 0 && event.timestamp() == m_released.time &&
                            event.nativeScanCode() == m_released.scanCode;
    return event.isAutoRepeat() || sameMoment;
}

// Alt+F4 does not come as a key where the desktop turns it into a request to close. It is a shortcut like any
// other.
void ShortcutKey::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous() && m_keys.contains(altKey)) {
        event->ignore();
        typeKey(f4Key);
        return;
    }
    OverlayDialog::closeEvent(event);
}

void ShortcutKey::typeKey(int code)
{
    if (!m_keys.contains(code)) {
        m_keys.append(code);
    }
    const QString keys = KeyNames::text(m_keys);
    display(keys, KeyNames::translated(keys));
}

// What is reported stays what was typed.
void ShortcutKey::refuseKey()
{
    display(KeyNames::text(m_keys), tr("this key cannot be used"));
}

void ShortcutKey::display(const QString &text, const QString &shown)
{
    m_text = text;
    // When there is not room for all, the last keys are the ones to see.
    FittingText::show(m_display, shown, {}, Qt::ElideLeft);
    m_display->setAccessibleDescription(shown);
}

void ShortcutKey::mousePressEvent(QMouseEvent *event)
{
    const auto pressed = [this, event](const Button &button) {
        const bool hit = isOn(button.label, event->pos());
        if (hit) {
            button.label->setStyleSheet(pictureSheet(button.picture, true));
        }
        return hit;
    };
    const auto press = [this](int code) {
        QKeyEvent key(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(this, &key);
    };
    if (pressed(m_win)) {
        press(windowsKey);
    } else if (pressed(m_alt)) {
        press(altKey);
    } else if (pressed(m_ctrl)) {
        press(ctrlKey);
    } else if (pressed(m_ok)) {
        confirm();
    } else if (pressed(m_clear)) {
        m_keys.clear();
        display(QString(), QString());
    } else if (pressed(m_cancel)) {
        hide();
    }
}

void ShortcutKey::mouseReleaseEvent(QMouseEvent *)
{
    showAtRest();
}

void ShortcutKey::confirm()
{
    if (m_keys.isEmpty()) {
        return;
    }
    Q_EMIT newShorcut(m_type, m_keys.value(0, noKey), m_keys.value(1, noKey), m_keys.value(2, noKey), m_text);
    qCDebug(lcUi).noquote() << "Emited Shortcut:" << m_text; // the spelling is deliberate
    m_keys.clear();
    hide();
}
