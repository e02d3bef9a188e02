#include "app/UpdateDialog.h"

#include "app/frame/ZRDialog.h"

#include <utility>

UpdateDialog::~UpdateDialog()
{
    delete m_dialog;
}

void UpdateDialog::ask(const QString &text, const QString &button1, const QString &button2, Action onButton1,
                       Action onButton2)
{
    if (m_dialog) {
        // Called from one of its own buttons, perhaps.
        m_dialog->disconnect(this);
        m_dialog->hide();
        m_dialog->deleteLater();
    }
    m_dialog = new ZRDialog(text, button1, button2, m_window);
    m_dialog->setAttribute(Qt::WA_ShowWithoutActivating); // the user is somewhere else, and may be typing
    const auto answer = [](Action action) {
        return [action = std::move(action)] {
            if (action) {
                action();
            }
        };
    };
    connect(m_dialog, &ZRDialog::onButton1Pressed, this, answer(std::move(onButton1)));
    connect(m_dialog, &ZRDialog::onButton2Pressed, this, answer(std::move(onButton2)));
    m_dialog->show();
}

bool UpdateDialog::isVisible() const
{
    return m_dialog && m_dialog->isVisible();
}
