#include "net/NetLog.h"

Q_LOGGING_CATEGORY(lcNet, "veltrix.net", QtInfoMsg)
