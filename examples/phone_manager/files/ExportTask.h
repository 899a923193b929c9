#pragma once

#include "Phone.h"
#include "files/Task.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

/// Writes what is checked on a phone, as it is at the start, to a new folder: contacts.csv and messages.csv,
/// copies of the pictures, small ones by number in "thumbnails", and index.html, which shows all of it. What
/// there is nothing of is left out, but for index.html. Importing the folder brings all of it back.
///
/// Of a file that cannot be written nothing stays, and of an export that is cancelled neither.
class ExportTask final : public Task
{
public:
    /// The folder is the one named, or where there is one already, that name with the first free number:
    /// "export(1)". "." and ".." are called by the names of their folders. Folders around it that are missing
    /// are made.
    ExportTask* initWithPhone_folder(Ref<Phone> phone, const std::filesystem::path& folder);

    /// The new folder; before the start, the one named.
    const std::filesystem::path& folder() const { return _folder; }

    /// By slices.
    double progress() const override;
    std::string summary() const override;

protected:
    void begin() override;
    bool work() override;
    void end() override;

private:
    bool makeFolder();
    template <class Record>
    void addTable(const std::string& file, const char* title, const std::vector<std::string>& columns,
                  const std::vector<Record>& records, std::size_t& written);
    void writePicture(const std::filesystem::path& file);
    bool writeThumbnail(const std::filesystem::path& picture, const std::string& name);
    bool complete(std::ofstream& stream, const std::string& name);
    void removeFaulty(const std::string& name);

    Ref<Phone> _phone;
    std::filesystem::path _folder;
    bool _hasFolder = false;
    std::vector<std::function<void()>> _slices;
    std::size_t _slicesDone = 0;
    std::ofstream _page;
    std::ofstream _table;      // that is being written
    std::size_t _contacts = 0; // that were written
    std::size_t _messages = 0;
    std::size_t _pictures = 0;
};
