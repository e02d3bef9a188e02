#include "app/AppLog.h"

Q_LOGGING_CATEGORY(lcApp, "veltrix.app", QtInfoMsg)
