#include "platform/foundation/NSLog.h"

#include <cstdarg>
#include <cstdio>
#include <string>

void NSLog(const char* format, ...)
{
    const std::string line = std::string(format) + '\n';
    std::va_list arguments;
    va_start(arguments, format);
    // In one go, which holds the stream.
    std::vfprintf(stderr, line.c_str(), arguments); // NOLINT(clang-analyzer-valist.Uninitialized): they are
    va_end(arguments);
}
