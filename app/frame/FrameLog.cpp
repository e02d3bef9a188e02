#include "app/frame/FrameLog.h"

Q_LOGGING_CATEGORY(lcFrame, "veltrix.frame", QtInfoMsg)
