#pragma once

#include <filesystem>
#include <vector>

/// Walks through the program as a user would, without a display, on settings of its own, and writes a picture
/// of each page to `folder`. Without files, those that are shipped as an example are imported. Returns
/// whether all could be written; what could not is told on standard error.
bool writeSnapshots(const std::filesystem::path& folder, const std::vector<std::filesystem::path>& files);
