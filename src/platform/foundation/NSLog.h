#pragma once

#include "platform/foundation/Export.h"

/// Writes a line to standard error, formatted as by `printf` and ended with a line end. Lines of several
/// threads are not mixed.
TESSALINE_EXPORT __attribute__((format(printf, 1, 2))) void NSLog(const char* format, ...);
