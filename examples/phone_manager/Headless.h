#pragma once

#include <string>
#include <vector>

/// How the program is called without a window.
inline constexpr const char* kHeadlessUsage = "phone_manager --import FILE... --export DIR [--charset NAME]";

/// Whether the arguments mean that.
bool isHeadless(const std::vector<std::string>& arguments);

/// Imports files and exports all that they hold, without a window or a display. What was done goes to the
/// standard output, what went wrong to standard error.
///
/// Returns the exit code: 0 if all is fine, 1 if something could not be read or written while the rest was,
/// and 2, with nothing done, for wrong arguments.
int runHeadless(const std::vector<std::string>& arguments);
