#pragma once

#include <QLoggingCategory>

/// What the device link reports: plugged and unplugged, ports that refuse to open, and, at debug level, every
/// line.
Q_DECLARE_LOGGING_CATEGORY(lcDevice)
