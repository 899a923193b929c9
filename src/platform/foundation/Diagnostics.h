#pragma once

/// Reports a mistake of the caller in one line on standard error: "operation: " and the formatted text
/// (as printf, without a line end). The caller of this function then answers with a harmless value.
__attribute__((format(printf, 2, 3))) void diagnose(const char* operation, const char* format, ...);
