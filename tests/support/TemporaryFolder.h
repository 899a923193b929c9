#pragma once

#include <filesystem>
#include <string>

/// A new folder that is removed with all it holds.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }

    void write(const std::string& file, const std::string& content) const;
    std::string read(const std::string& file) const;

private:
    std::filesystem::path _path;
};
