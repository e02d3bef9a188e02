#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;

namespace simulator
{

class DeviceView;
class ToggleSwitch;
class VirtualDevice;

/// The virtual device's window: the drawn device, the cable's switch, and what has been reported.
class DeviceWindow : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceWindow)

public:
    /// @p device must outlive this object; @p path is where it is published.
    DeviceWindow(VirtualDevice &device, const QString &path, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *createPanel();
    void showState();
    void showReport(const QByteArray &message);
    void leaveFocus(bool leave);

    VirtualDevice &m_device;
    const QString m_path;
    QStringList m_reports;
    DeviceView *m_view;
    ToggleSwitch *m_plugSwitch;
    ToggleSwitch *m_focusSwitch;
    QLabel *m_state;
    QLabel *m_reportLabel;
};

} // namespace simulator
