#include "ui/UiLog.h"

Q_LOGGING_CATEGORY(lcUi, "veltrix.ui", QtInfoMsg)
