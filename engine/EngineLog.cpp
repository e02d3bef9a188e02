#include "engine/EngineLog.h"

Q_LOGGING_CATEGORY(lcEngine, "veltrix.engine", QtInfoMsg)
