#include "files/ImportTask.h"

#include "Resources.h"
#include "files/ExportTask.h"

#include <algorithm>
#include <utility>

namespace fs = std::filesystem;

constexpr std::size_t kBytesInSlice = std::size_t{1} << 20; // of tables

/// The files that a folder stands for, and anything else for itself.
static std::vector<fs::path> filesIn(const fs::path& path)
{
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(path, error); !error && entry != end(entry); entry.increment(error)) {
        const fs::path& file = entry->path();
        std::error_code unknown; // shows with the file
        if (!entry->is_directory(unknown) && file.filename() != ExportTask::kPage &&
            file.filename().string()[0] != '.') {
            files.push_back(file);
        }
    }
    if (error) { // it is no folder, or one that cannot be read to its end, which shows with it
        files.push_back(path);
    }
    std::ranges::sort(files);
    return files;
}

ImportTask::ImportTask(const std::vector<fs::path>& files, Ref<Phone> phone, std::string charset)
    : _phone(std::move(phone)), _charset(std::move(charset))
{
    for (const fs::path& path : files) {
        for (const fs::path& file : filesIn(path)) {
            addStep([this, file] { return importFile(file); },
                    std::max(static_cast<double>(FileUtil::getFileSize(file.c_str())), 1.0));
        }
    }
}

std::string ImportTask::summary() const
{
    const std::string added =
        localised("Imported contacts: %s, messages: %s, pictures: %s.",
                  {std::to_string(_contacts), std::to_string(_messages), std::to_string(_pictures)});
    return state() == State::Cancelled ? localised("The import was cancelled.") + ' ' + added : added;
}

double ImportTask::importFile(const fs::path& file)
{
    std::error_code error;
    const std::string name = shownName((file.has_filename() ? file : file.parent_path()).filename().string());
    if (!fs::is_regular_file(file, error)) { // opening a pipe would wait for its other end
        addFault(localised("“%s” cannot be read.", {name}));
    } else if (fs::file_size(file, error) > kLargestFile) {
        addFault(localised("“%s” is too large.", {name}));
    } else if (RecordReader::isTable(file)) {
        return importTable(file, name);
    } else if (const Ref<NSImage> thumbnail = thumbnailOf(file, Picture::kThumbnailSize)) {
        _phone->pictures.push_back({file, thumbnail});
        ++_pictures;
    } else {
        addFault(localised("“%s” is neither a table nor a picture.", {name}));
    }
    return 1.0;
}

double ImportTask::importTable(const fs::path& file, const std::string& name)
{
    if (!_reader) {
        TextFile content(file, _charset);
        if (content.fault != nullptr) {
            addFault(localised(content.fault, {name, content.charset}));
            return 1.0;
        }
        _reader.emplace(name, std::move(content));
    }
    const std::size_t contacts = _phone->contacts.size();
    const std::size_t messages = _phone->messages.size();
    bool isOpen = true;
    const std::size_t begin = _reader->bytesRead();
    for (std::size_t count = 0;
         isOpen && count < kRecordsInSlice && _reader->bytesRead() - begin < kBytesInSlice; ++count) {
        std::string fault;
        isOpen = _reader->next(*_phone, fault);
        if (!fault.empty()) {
            addFault(std::move(fault));
        }
    }
    _contacts += _phone->contacts.size() - contacts;
    _messages += _phone->messages.size() - messages;
    if (isOpen) {
        constexpr double kNotAll = 0.999; // until the end is met
        return std::min(_reader->progress(), kNotAll);
    }
    _reader.reset();
    return 1.0;
}
