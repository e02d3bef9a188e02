#pragma once

#include "app/Commands.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class PlatformFactory;
struct DeviceFinding;
struct RemoteAnswer;

/// What a request for support needs to know, on standard output: what was found, where keys go, which parts
/// of the desktop are there. Works beside a running copy and without a display.
class Doctor
{
    Q_DECLARE_TR_FUNCTIONS(Doctor)

public:
    /// Needs a QApplication, and the factory in @p call.
    static int run(const CommandCall &call);

    /// Of the lines of a log those that hold nothing that the user has typed, pressed or named: no line about
    /// a single event, and no name of a mapping.
    static QStringList withoutSecrets(const QStringList &log);

    /// What a running copy says of its state, which @p status is for programs, but for the name that the user
    /// gave to a mapping. Or that there is none.
    static QStringList runningCopy(const RemoteAnswer &status);

private:
    static QStringList device(const DeviceFinding &finding, bool isRunning);
    static QStringList session();
    static QStringList input(const PlatformFactory &platforms, const QString &choice);
    static QStringList paths();
    static QStringList versions();
};
