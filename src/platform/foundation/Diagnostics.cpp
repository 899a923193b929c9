#include "platform/foundation/Diagnostics.h"

#include <array>
#include <cstdarg>
#include <cstdio>

void diagnose(const char* operation, const char* format, ...)
{
    constexpr std::size_t kLongestLine = 1024;
    std::array<char, kLongestLine> text{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    std::fprintf(stderr, "%s: %s\n", operation, text.data());
}
