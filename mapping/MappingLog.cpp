#include "mapping/MappingLog.h"

Q_LOGGING_CATEGORY(lcMapping, "veltrix.mapping", QtInfoMsg)
