#pragma once

#include "Phone.h"
#include "Task.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class NewFile;

/// Writes what is checked on a phone, as it is at the start, to a new folder: contacts.csv and messages.csv,
/// which can be imported again without any loss, copies of the pictures in "pictures", small ones in
/// "thumbnails", and index.html, which shows all of it. What there is nothing of is left out, but for
/// index.html.
///
/// A file gets its name when it is complete: what is in the folder is whole, and index.html, which comes
/// last, is only there if the export went on to its end.
class ExportTask final : public Task
{
public:
    ExportTask();

    /// The folder is the one named, or where there is one already, that name with the first free number:
    /// "export(1)". Folders around it that are missing are made.
    ExportTask* initWithPhone_folder(Ref<Phone> phone, const std::filesystem::path& folder);

    /// The new folder; before the start, the one named.
    const std::filesystem::path& folder() const { return _folder; }

    /// By slices.
    double progress() const override;
    std::string summary() const override;

    // What was written.
    std::size_t contacts() const { return hasWritten("contacts.csv") ? _contacts.size() : 0; }
    std::size_t messages() const { return hasWritten("messages.csv") ? _messages.size() : 0; }
    std::size_t pictures() const { return _copies.size(); }

protected:
    ~ExportTask() override;

    void begin() override;
    bool work() override;
    void end() override;

private:
    /// Work that is done number by number, from 0 on.
    struct Step {
        std::size_t count;
        std::size_t inSlice; // how many make a slice
        std::function<void(std::size_t)> perform;
    };
    /// A part of a file: so many texts, one behind the other.
    struct Part {
        std::size_t count;
        std::function<std::string(std::size_t)> text;
    };
    struct Copy {
        std::string name; // in "pictures", and with ".png" behind it in "thumbnails"
        std::string caption;
        bool hasThumbnail;
    };

    bool makeFolder();
    static Part constant(const std::string& text);
    void addFile(const std::string& name, std::vector<Part> parts);
    void addWriteFault(const std::string& name);
    bool hasWritten(const std::string& name) const;
    std::vector<Part> page() const;
    void copyPicture(const Picture& picture);
    bool writeThumbnail(const std::string& name);
    static std::string figure(const Copy& copy);

    Ref<Phone> _phone;
    std::filesystem::path _folder;
    bool _hasFolder = false;
    std::vector<Contact> _contacts;
    std::vector<Message> _messages;
    std::vector<Picture> _pictures;
    std::vector<Copy> _copies;
    std::vector<std::string> _written; // names of files that are complete
    std::vector<Step> _steps;
    std::size_t _step = 0;
    std::size_t _next = 0; // number in it
    std::size_t _slices = 0;
    std::size_t _slicesDone = 0;
    std::unique_ptr<NewFile> _file; // that is being written
};
