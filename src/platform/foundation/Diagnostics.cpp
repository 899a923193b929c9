#include "platform/foundation/Diagnostics.h"

#include <cstdio>

void diagnose(const char* operation, const std::string& problem)
{
    std::fprintf(stderr, "%s: %s\n", operation, problem.c_str());
}
