#pragma once

#include "platform/foundation/ClassTable.h"

#include <span>

/// The views and cells of this floor, for interface files to name (`NSNib::addClasses`).
TESSALINE_EXPORT extern const std::span<const ClassTable* const> kWindowClasses;
