#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tessaline-XXXXXX").string();
    _path = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

void TemporaryFolder::write(const std::string& file, const std::string& content) const
{
    std::ofstream(_path / file, std::ios::binary) << content;
}

std::string TemporaryFolder::read(const std::string& file) const
{
    std::ifstream stream(_path / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
