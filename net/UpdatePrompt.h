#pragma once

#include <QObject>
#include <QString>

#include <functional>

/// Asks the user what to do with an update. The program answers with its message dialog, a test with whatever
/// it likes.
class UpdatePrompt : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UpdatePrompt)

public:
    using Action = std::function<void()>;

    using QObject::QObject;

    /// Shows @p text with two buttons, or with one if @p button2 is empty, and returns at once. A question
    /// that is still shown is replaced, and its actions are never called. At most one of the actions is
    /// called, once; an action may be empty.
    virtual void ask(const QString &text, const QString &button1, const QString &button2, Action onButton1,
                     Action onButton2) = 0;

    /// Whether the last question still waits for the user.
    virtual bool isVisible() const = 0;
};
