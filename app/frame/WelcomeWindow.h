#pragma once

#include <QWidget>

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

private:
    QLabel *m_indicator;
    QLabel *m_refusal;
};
