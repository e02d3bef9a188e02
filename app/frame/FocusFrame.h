#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

/// The frame round what the keyboard has moved the focus to: white, unless a style sheet sets another colour
/// ("FocusFrame { qproperty-colour: ... }"), which then has a white one within. It does not show for a focus
/// that the mouse or the window's activation has brought, but comes back with the window. Where what had the
/// focus hides or is disabled, the frame shows on what gets it next only if it showed there.
class FocusFrame : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor colour MEMBER m_colour)
    Q_DISABLE_COPY_MOVE(FocusFrame)

public:
    /// Lies over all of @p button, which owns it. What is put on @p button later has to be below: raise().
    explicit FocusFrame(QWidget *button);

    /// Shows for every focus, however it came: where Return goes to what has it.
    void showForEveryFocus() { m_forEveryFocus = true; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isByKeyboard(Qt::FocusReason reason) const;

    QColor m_colour;
    QPointer<QWidget> m_before; ///< what has the focus; at our FocusIn still what had it
    bool m_byKeyboard = false;
    bool m_forEveryFocus = false;
};
