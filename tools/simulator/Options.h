#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace simulator
{

/// What the command line asks for.
struct Options {
    bool help = false;
    bool version = false;
    bool window = false;     ///< show the window: asked for, or neither script nor standard input is
    bool readInput = false;  ///< take lines from standard input
    bool stay = false;       ///< stay plugged in after the script's end
    bool unplugged = false;  ///< start with the cable out
    bool timestamps = false; ///< tell the time of each report on standard output
    std::optional<QString> scriptFile;
    std::optional<QString> link;   ///< where to publish the device, instead of the usual place
    std::optional<quint16> listen; ///< the TCP port to be at, instead of a link; 0: any free one
    QString error;                 ///< what is wrong with the command line; empty when nothing is
};

/// @p arguments includes the program's name.
Options parseOptions(const QStringList &arguments);

QString helpText();

} // namespace simulator
