#pragma once

#include "Task.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class Phone;
class RecordReader;

/// Adds what files hold to a phone: tables of contacts or of messages (see `RecordReader`), and pictures.
class ImportTask final : public Task
{
public:
    ImportTask();

    /// All files make one task. A folder stands for the files in it that are not hidden, by name; the folders
    /// in it are left out.
    ImportTask* initWithFiles_phone(std::vector<std::filesystem::path> files, Ref<Phone> phone);

    /// The character set of tables that do not tell theirs. Default "UTF-8".
    void setCharset(std::string name);

    /// By bytes read.
    double progress() const override;
    std::string summary() const override;

    // What was added.
    std::size_t contacts() const { return _contacts; }
    std::size_t messages() const { return _messages; }
    std::size_t pictures() const { return _pictures; }
    /// The file that is read next or being read; empty before the start and in the end.
    std::filesystem::path currentFile() const;

protected:
    ~ImportTask() override;

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
    std::uint64_t _bytesBefore = 0;        // in the files that are done
    std::uint64_t _bytes = 0;              // in all of them
    std::size_t _contacts = 0;
    std::size_t _messages = 0;
    std::size_t _pictures = 0;
};
