#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/Ref.h"

#include <cstdint>
#include <pthread.h>

class NSString;

/// What SystemUtil keeps to itself, for its tests.
struct SystemUtilState {
    std::int64_t& gTaskStartSecond;
    std::int64_t& gTaskAddId;
    pthread_once_t& random_is_initialized;
    /// What `SystemUtil::getCompileYear` makes of the compiler's build date, "Apr  3 2019".
    Ref<NSString> (*compileYear)(const char* buildDate);
};

TESSALINE_EXPORT SystemUtilState systemUtilState();
