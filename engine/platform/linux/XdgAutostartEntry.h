#pragma once

#include "engine/platform/AutostartEntry.h"

/// "veltrix.desktop" in the user's autostart folder, which every desktop reads at log-on.
///
/// An entry that the desktop would not start (Hidden=true, switched off in its session settings, or empty, as
/// a full disk may leave it) counts as absent.
class XdgAutostartEntry final : public AutostartEntry
{
    Q_DISABLE_COPY_MOVE(XdgAutostartEntry)

public:
    /// In the folder that the environment names: $XDG_CONFIG_HOME/autostart, else ~/.config/autostart.
    XdgAutostartEntry();

    /// In any folder; it is made when it is needed.
    explicit XdgAutostartEntry(const QString &folder);

    bool exists() const override;
    void write(const QString &program) override;
    void remove() override;

    QString path() const { return m_path; }

    /// @p program as the value of an Exec line: quoted, its special characters escaped.
    static QString execValue(const QString &program);

private:
    QString m_path;
};
