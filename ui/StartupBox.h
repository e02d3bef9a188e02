#pragma once

#include "ui/PageCheckBox.h"

class LaunchOnStartup;

/// The check box "Launch on startup". It shows what is so; toggled() is the user's choice alone.
class StartupBox : public PageCheckBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(StartupBox)

public:
    /// @p launchOnStartup must outlive this object.
    StartupBox(const LaunchOnStartup &launchOnStartup, QWidget *page);

    /// Looks again: others may have changed the entry, or a choice may have failed.
    void refresh();

private:
    const LaunchOnStartup &m_launchOnStartup;
};
