#pragma once

#include <filesystem>
#include <string>
#include <vector>

constexpr int kWrongArguments = 2; // an exit code

/// Imports files and exports all that they hold to a new folder, without a window or a display. What was done
/// goes to the standard output, what went wrong to standard error. The character set is that of tables which
/// do not tell theirs.
///
/// Returns the exit code: 0 if all is fine, 1 if something could not be read or written while the rest was,
/// and `kWrongArguments`, with nothing done, for an unknown character set.
int runHeadless(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                const std::string& charset);
