#pragma once

#include "Phone.h"
#include "files/RecordReader.h"
#include "files/Task.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Adds what files hold to a phone: tables of contacts or of messages (see `RecordReader`), and pictures.
class ImportTask final : public Task
{
public:
    /// All files make one task. A folder stands for the files in it, by name, but for those that are hidden,
    /// the page of an export and folders. The character set is that of tables which do not tell theirs.
    ImportTask(const std::vector<std::filesystem::path>& files, Ref<Phone> phone,
               std::string charset = "UTF-8");

    std::string summary() const override;

private:
    double importFile(const std::filesystem::path& file);
    double importTable(const std::filesystem::path& file, const std::string& name);

    Ref<Phone> _phone;
    std::string _charset;
    std::optional<RecordReader> _reader; // of the present file, if that is a table and was begun
    std::size_t _contacts = 0;           // that were added
    std::size_t _messages = 0;
    std::size_t _pictures = 0;
};
