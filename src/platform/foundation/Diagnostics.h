#pragma once

#include <string>

/// Reports a mistake of the caller in one line on standard error, "operation: problem". The function that
/// calls this then answers with a harmless value.
void diagnose(const char* operation, const std::string& problem);
