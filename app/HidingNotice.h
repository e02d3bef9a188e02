#pragma once

#include <QCoreApplication>

#include <functional>

class QString;
class Settings;

/// Says how a hidden window comes back where no tray icon brings it: once for each user.
class HidingNotice
{
    Q_DECLARE_TR_FUNCTIONS(HidingNotice)

public:
    /// @p show has a title and a text.
    static void giveOnce(Settings &settings,
                         const std::function<void(const QString &, const QString &)> &show);
};
