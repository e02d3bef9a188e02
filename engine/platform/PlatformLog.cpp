#include "engine/platform/PlatformLog.h"

Q_LOGGING_CATEGORY(lcPlatform, "veltrix.platform", QtInfoMsg)
