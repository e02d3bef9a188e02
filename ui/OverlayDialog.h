#pragma once

#include "app/frame/Look.h"

#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>

class Desktop;

/// What the page's dialogs share: a translucent window that covers the page's window, and stays with it, with
/// a white panel on it.
///
/// Built hidden. A dialog that wants all input takes hold of it once its window is really on the screen (an X
/// server refuses it before) and lets go on every way out: hidden, closed, destroyed, the page or its window
/// hidden, the program quitting. Escape closes it.
///
/// Its looks are its own: the root has a style sheet, since a parent's sheet would reach in otherwise.
class OverlayDialog : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(OverlayDialog)

public:
    enum Grab { GrabNothing = 0, GrabMouse = 1, GrabKeyboard = 2 };
    Q_DECLARE_FLAGS(Grabs, Grab)

    /// @p grabs is the input that goes to the dialog alone while it is shown. With GrabMouse, all of the
    /// mouse's events arrive at the dialog itself and none at what lies on its panel. A @p parent that is a
    /// ZRBaseWindow gets setBlur() connected to its slot of that name.
    OverlayDialog(const QSize &panelSize, Grabs grabs, QWidget *parent);
    ~OverlayDialog() override;

    /// Has to be told before the dialog is first shown. It must outlive the dialog. Without one windows count
    /// as translucent.
    void setDesktop(const Desktop *desktop) { m_desktop = desktop; }

    /// Says in a quiet line on the panel, and to screen readers, what the dialog is about: "Button 3, Shift
    /// 1". Has to be told before the dialog is shown. Only for a dialog that has called addSubject().
    void setSubject(const QString &subject);

    /// Where a panel of @p panelSize stands on a primary screen of @p screenSize, in the screen's pixels.
    static QPoint panelOnScreen(const QSize &screenSize, const QSize &panelSize);

    /// The style sheet of a picture button: the picture of the buttons folder at rest or pressed.
    static QString pictureSheet(const QString &name, bool pressed);

Q_SIGNALS:
    /// Sent with true whenever the dialog is shown, and never with false: undoing it is the page's business.
    void setBlur(bool on);

    /// The dialog was shown and is no more, however it came to that. Not sent by a dialog that is destroyed.
    void hidden();

protected:
    /// The white panel: the parent of everything to be seen on the dialog.
    QWidget *panel() const { return m_panel; }

    /// Changes the panel's height; its upper left corner stays.
    void setPanelHeight(int height);

    /// Puts a label with a picture of the buttons folder, at rest, on the panel; @p name is for screen
    /// readers.
    template <typename Label>
    Label *addPicture(const QString &picture, const QRect &place, const QString &name,
                      const QString &toolTip = {});

    /// Puts a text on the panel.
    QLabel *addText(const QString &text, const QRect &place, const QString &style, const QFont &font);

    /// Adds the line that setSubject() fills.
    void addSubject(const QRect &place);

    /// Adds rules to the dialog's own style sheet.
    void addStyle(const QString &rules) { setStyleSheet(styleSheet() + rules); }

    /// May be null.
    const Desktop *desktop() const { return m_desktop; }

    /// Whether a place of the dialog (a mouse event's, say) lies on something on the panel.
    bool isOn(const QWidget *onPanel, const QPoint &place) const;

    // Whoever overrides one of these calls this class's.
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void coverWindow();
    void takeBackground();
    void watch(bool on);
    void takeInput();
    void tryAgain();
    void letGoOfInput();

    const QSize m_firstPanelSize;
    const Grabs m_grabs;
    QWidget *m_panel;
    QLabel *m_subject = nullptr;
    const Desktop *m_desktop = nullptr;
    QPointer<QWidget> m_window; // what the dialog covers, while it is shown
    QPixmap m_background;       // what shows through the dialog where nothing does by itself
    QTimer m_retry;
    int m_attempts = 0;
    bool m_holding = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OverlayDialog::Grabs)

template <typename Label>
Label *OverlayDialog::addPicture(const QString &picture, const QRect &place, const QString &name,
                                 const QString &toolTip)
{
    auto *label = Look::addPicture<Label>(m_panel, place, pictureSheet(picture, false));
    label->setAccessibleName(name);
    label->setToolTip(toolTip);
    return label;
}
