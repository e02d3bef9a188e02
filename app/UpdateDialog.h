#pragma once

#include "net/UpdatePrompt.h"

#include <QPointer>

class ZRDialog;
class QWidget;

/// Asks about an update with the program's message dialog, which takes no keys before the user has gone to
/// it.
class UpdateDialog : public UpdatePrompt
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UpdateDialog)

public:
    UpdateDialog() = default;
    ~UpdateDialog() override;

    /// Messages lie over @p window from now on.
    void setWindow(QWidget *window) { m_window = window; }

    void ask(const QString &text, const QString &button1, const QString &button2, Action onButton1,
             Action onButton2) override;
    bool isVisible() const override;

private:
    QPointer<QWidget> m_window;
    QPointer<ZRDialog> m_dialog; // a child of the window, if there is one
};
