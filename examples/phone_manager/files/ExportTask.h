#pragma once

#include "Phone.h"
#include "files/Task.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

/// Writes what is checked on a phone to a new folder: contacts.csv and messages.csv, copies of the pictures,
/// small ones by number in "thumbnails", and index.html, which shows all of it. What there is nothing of is
/// left out, but for index.html. Importing the folder brings all of it back.
///
/// Of a file that cannot be written nothing stays, and of an export that is cancelled neither.
class ExportTask final : public Task
{
public:
    /// What is checked counts as it is now. The folder is the one named, or where there is one already, one
    /// with a number that is free (`FileUtil::getDirNewName`). "." and ".." are called by the names of their
    /// folders. Folders around it that are missing are made.
    ExportTask(const Phone& phone, const std::filesystem::path& folder);

    static constexpr const char* kPage = "index.html";

    /// The new folder; before the start, the one named.
    const std::filesystem::path& folder() const { return _folder; }

    std::string summary() const override;

protected:
    void didCancel() override;

private:
    using Fields = std::vector<std::string>;
    struct Table {
        std::string file;
        const char* title;
        std::size_t groupColumn;  // which shows in the user's language on the page
        std::vector<Fields> rows; // the first names the columns
        std::size_t rowsWritten = 0;
    };

    double begin();
    void addTable(Table csv, std::size_t& written);
    double writeRows(Table& csv, std::size_t& written);
    void writePicture(const std::filesystem::path& file);
    bool writeThumbnail(const std::filesystem::path& picture, const std::string& name);
    bool complete(std::ofstream& stream, const std::string& name);
    void removeFaulty(const std::string& name);

    std::filesystem::path _folder;
    bool _hasFolder = false;
    std::ofstream _page;
    std::ofstream _table;                            // that is being written
    std::map<std::string, std::string> _shownGroups; // by their names
    std::size_t _contacts = 0;                       // that were written
    std::size_t _messages = 0;
    std::size_t _pictures = 0;
};
