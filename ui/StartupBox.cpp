#include "ui/StartupBox.h"

#include "app/frame/FittingText.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"
#include "engine/LaunchOnStartup.h"

#include <QSignalBlocker>

StartupBox::StartupBox(const LaunchOnStartup &launchOnStartup, QWidget *page)
    : PageCheckBox(page)
    , m_launchOnStartup(launchOnStartup)
{
    setGeometry(24, 625, 200, 15);
    setFont(Look::font(Look::Face::Page, 10));
    setStyleSheet(QStringLiteral("QCheckBox { color : rgba(255,255,255,0.40); }"));
    setChecked(m_launchOnStartup.isLaunchOnStartup());
    FittingText::show(this, tr("Launch on startup"), tr("Start the program when you log on"));
    new FocusFrame(this);
}

void StartupBox::refresh()
{
    const QSignalBlocker blocker(this); // reading is no choice of the user's
    setChecked(m_launchOnStartup.isLaunchOnStartup());
}
