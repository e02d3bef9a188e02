#pragma once

#include "net/UpdatePrompt.h"

#include <QList>
#include <QStringList>

#include <utility>

/// Records what is asked; the test presses the buttons. Compared with the dialog by tst_PromptDouble.
class FakePrompt : public UpdatePrompt
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FakePrompt)

public:
    FakePrompt() = default;

    void ask(const QString &text, const QString &button1, const QString &button2, Action onButton1,
             Action onButton2) override
    {
        questions.append({text, button1, button2});
        m_actions = {std::move(onButton1), std::move(onButton2)};
        m_visible = true;
        Q_EMIT asked();
    }

    bool isVisible() const override { return m_visible; }

    /// Presses the first (0) or the second (1) button of the last question.
    void press(int button)
    {
        m_visible = false;
        const Action action = m_actions.value(button);
        m_actions.clear();
        if (action) {
            action();
        }
    }

    QList<QStringList> questions;

Q_SIGNALS:
    void asked();

private:
    QList<Action> m_actions;
    bool m_visible = false;
};
