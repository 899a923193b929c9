#pragma once

#include "Phone.h"
#include "files/RecordReader.h"
#include "files/Task.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

/// Adds what files hold to a phone: tables of contacts or of messages (see `RecordReader`), and pictures.
class ImportTask final : public Task
{
public:
    /// All files make one task. A folder stands for the files in it, by name, but for those that are hidden,
    /// pages (".html") and folders.
    ImportTask* initWithFiles_phone(std::vector<std::filesystem::path> files, Ref<Phone> phone);

    /// The character set of tables that do not tell theirs. Default "UTF-8".
    void setCharset(std::string name) { _charset = std::move(name); }

    /// By bytes read.
    double progress() const override;
    std::string summary() const override;

protected:
    void begin() override;
    bool work() override;
    void end() override;

private:
    void readTable();
    void readPicture();
    void finishFile();

    std::vector<std::filesystem::path> _files;
    Ref<Phone> _phone;
    std::string _charset = "UTF-8";
    std::size_t _file = 0;                 // which of them comes next
    std::unique_ptr<RecordReader> _reader; // null unless that is a table and was begun
    std::ifstream _stream;                 // closed unless that is no table, and was begun
    std::string _picture;                  // what was read of that
    std::uint64_t _bytesBefore = 0;        // in the files that are done
    std::uint64_t _bytes = 0;              // in all of them
    std::size_t _contacts = 0;             // that were added
    std::size_t _messages = 0;
    std::size_t _pictures = 0;
};
