#include "tools/simulator/DeviceWindow.h"

#include "tools/simulator/DeviceView.h"
#include "tools/simulator/ToggleSwitch.h"
#include "tools/simulator/VirtualDevice.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace simulator
{

namespace
{

constexpr int reportsShown = 16;

QString stateStyle(const char *text, const char *background)
{
    return QStringLiteral("QLabel { color: %1; background: %2; border-radius: 11px; padding: 3px 12px; "
                          "font-weight: 600; }")
        .arg(QLatin1String(text), QLatin1String(background));
}

/// A report as a script would have it: without its end, and unprintable bytes as dots.
QString readable(QByteArray message)
{
    message = message.simplified();
    for (char &byte : message) {
        if (byte < ' ' || byte > '~') {
            byte = '.';
        }
    }
    return QString::fromLatin1(message);
}

} // namespace

DeviceWindow::DeviceWindow(VirtualDevice &device, const QString &path, QWidget *parent)
    : QWidget(parent)
    , m_device(device)
    , m_path(path)
    , m_view(new DeviceView(device))
    , m_plugSwitch(new ToggleSwitch(tr("Plugged in")))
    , m_focusSwitch(new ToggleSwitch(tr("Leave the keyboard to other windows")))
    , m_state(new QLabel)
    , m_reportLabel(new QLabel)
{
    setWindowTitle(tr("Virtual device"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view, 1);
    layout->addWidget(createPanel());
    m_view->setFocus();

    connect(m_plugSwitch, &ToggleSwitch::toggled, this,
            [this](bool plugged) { m_device.setPlugged(plugged); });
    connect(m_focusSwitch, &ToggleSwitch::toggled, this, &DeviceWindow::leaveFocus);
    connect(&m_device, &VirtualDevice::changed, this, &DeviceWindow::showState);
    connect(&m_device, &VirtualDevice::reported, this, &DeviceWindow::showReport);
    showState();
}

QWidget *DeviceWindow::createPanel()
{
    auto *panel = new QWidget;
    panel->setObjectName(QStringLiteral("panel"));
    panel->setStyleSheet(QStringLiteral("#panel { background: white; border-top: 1px solid #d9d9e6; }"
                                        "QLabel { color: #3c3c4a; }"));
    m_plugSwitch->setToolTip(tr("Puts the cable in or pulls it out"));
    m_focusSwitch->setToolTip(
        tr("A click on the device then leaves the focus where it is, so that the injected keys "
           "arrive there.\nThe device's own keys do nothing meanwhile."));

    auto *path = new QLabel(m_path);
    path->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    path->setToolTip(tr("Start the program with --port and this text"));
    m_reportLabel->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_reportLabel->setMinimumWidth(1);
    m_reportLabel->setToolTip(tr("The latest reports, the newest first"));
    m_reportLabel->setAccessibleName(tr("Latest reports"));

    auto *switches = new QHBoxLayout;
    switches->addWidget(m_plugSwitch);
    switches->addSpacing(20);
    switches->addWidget(m_focusSwitch);
    switches->addStretch(1);
    switches->addWidget(m_state);

    auto *texts = new QHBoxLayout;
    texts->addWidget(path);
    texts->addSpacing(24);
    texts->addWidget(m_reportLabel, 1);

    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(22, 14, 22, 16);
    layout->setSpacing(12);
    layout->addLayout(switches);
    layout->addLayout(texts);
    return panel;
}

void DeviceWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QLinearGradient background(0, 0, 0, height());
    background.setColorAt(0, QColor(0xf7, 0xf7, 0xfb));
    background.setColorAt(1, QColor(0xde, 0xdc, 0xee));
    painter.fillRect(rect(), background);
}

void DeviceWindow::showState()
{
    const QSignalBlocker blocker(m_plugSwitch);
    m_plugSwitch->setChecked(m_device.isPlugged());
    m_plugSwitch->update();
    if (!m_device.isPlugged()) {
        m_state->setText(tr("Unplugged"));
        m_state->setStyleSheet(stateStyle("#5c5c6b", "#e6e6ee"));
    } else if (m_device.isOpened()) {
        m_state->setText(tr("In use"));
        m_state->setStyleSheet(stateStyle("#0d6b41", "#d3f5e4"));
    } else {
        m_state->setText(tr("Waiting for the program"));
        m_state->setStyleSheet(stateStyle("#8a5200", "#ffedcf"));
    }
}

void DeviceWindow::showReport(const QByteArray &message)
{
    m_reports.prepend(readable(message));
    while (m_reports.size() > reportsShown) {
        m_reports.removeLast();
    }
    m_reportLabel->setText(m_reports.join(QStringLiteral("  ")));
}

void DeviceWindow::leaveFocus(bool leave)
{
    // The window manager reads the flag when the window is mapped.
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, leave);
    show();
}

} // namespace simulator
