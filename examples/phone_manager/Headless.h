#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Imports files and exports all that they hold to a new folder, without a window or a display. What was done
/// goes to the standard output, what went wrong to standard error. The character set is that of tables which
/// do not tell theirs. Returns the exit code: failure if something could not be read or written; the rest
/// was.
int runHeadless(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                const std::string& charset);
