#include "device/DeviceLog.h"

Q_LOGGING_CATEGORY(lcDevice, "veltrix.device", QtInfoMsg)
