#pragma once

#include <QUrl>
#include <QWidget>

class ClickableLabel;
class QLabel;

/// The page that is shown while no device is connected.
class WelcomeWindow : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WelcomeWindow)

public:
    explicit WelcomeWindow(QWidget *parent = nullptr);

    /// Sets the indicator.
    void setConnected(bool connected);

    /// Says why the device's port cannot be opened, in the system's words. Empty takes the line away.
    void showRefusal(const QString &reason);

    /// The bottom line: @p text says what was found; the link below it leads to @p help. A problem is written
    /// to be seen.
    void showFinding(const QString &text, bool isProblem, const QUrl &help);

private:
    void addHelp();

    QLabel *m_indicator;
    QLabel *m_refusal;
    QLabel *m_finding;
    ClickableLabel *m_help = nullptr;
    QUrl m_helpAddress;
};
