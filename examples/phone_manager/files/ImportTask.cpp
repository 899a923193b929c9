#include "files/ImportTask.h"

#include "Resources.h"

#include <platform/graphics/NSImage.h>
#include <util/FileUtil.h>
#include <util/ImageUtil.h>

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace
{

// A slice ends with the first of these.
constexpr std::size_t kMostRecords = 500;
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

std::uint64_t sizeOf(const fs::path& file)
{
    return static_cast<std::uint64_t>(FileUtil::getFileSize(file.c_str()));
}

std::string nameOf(const fs::path& path)
{
    return shownName((path.has_filename() ? path : path.parent_path()).filename().string());
}

bool isLeftOut(const fs::directory_entry& entry)
{
    std::error_code error;
    return entry.is_directory(error) || entry.path().filename().string().starts_with('.') ||
           entry.path().extension() == ".html";
}

/// The files that a folder stands for, and anything else for itself.
std::vector<fs::path> filesIn(const fs::path& path)
{
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (!isLeftOut(*entry)) {
            files.push_back(entry->path());
        }
    }
    std::ranges::sort(files);
    if (error) { // it is no folder, or one that cannot be read to its end, which shows with it
        files.push_back(path);
    }
    return files;
}

} // namespace

ImportTask* ImportTask::initWithFiles_phone(std::vector<fs::path> files, Ref<Phone> phone)
{
    _files = std::move(files);
    _phone = std::move(phone);
    return this;
}

double ImportTask::progress() const
{
    if (state() == State::Done) {
        return 1.0;
    }
    const std::uint64_t read = _bytesBefore + (_reader ? _reader->bytesRead() : _picture.size());
    // A file may grow while it is read.
    return _bytes == 0 ? 0.0 : std::min(static_cast<double>(read) / static_cast<double>(_bytes), 1.0);
}

std::string ImportTask::summary() const
{
    const std::string added =
        localised("Imported contacts: %s, messages: %s, pictures: %s.",
                  {std::to_string(_contacts), std::to_string(_messages), std::to_string(_pictures)});
    return state() == State::Cancelled ? localised("The import was cancelled.") + ' ' + added : added;
}

void ImportTask::begin()
{
    std::vector<fs::path> files;
    for (const fs::path& path : _files) {
        std::ranges::copy(filesIn(path), std::back_inserter(files));
    }
    _files = std::move(files);
    for (const fs::path& file : _files) {
        _bytes += sizeOf(file);
    }
}

bool ImportTask::work()
{
    if (_file == _files.size()) {
        return false;
    }
    const fs::path& file = _files[_file];
    std::error_code error;
    if (!fs::is_regular_file(file, error)) { // opening a pipe would wait for its other end
        addFault(localised("“%s” cannot be read.", {nameOf(file)}));
        finishFile();
    } else if (RecordReader::isTable(file)) {
        readTable();
    } else {
        readPicture();
    }
    return _file < _files.size();
}

void ImportTask::readTable()
{
    if (!_reader) {
        _reader = std::make_unique<RecordReader>(_files[_file], _charset);
    }
    const std::size_t contacts = _phone->contacts().size();
    const std::size_t messages = _phone->messages().size();
    const std::uint64_t bytes = _reader->bytesRead();
    std::vector<std::string> faults;
    bool isOpen = true;
    for (std::size_t count = 0; isOpen && count < kMostRecords && _reader->bytesRead() - bytes < kMostBytes;
         ++count) {
        isOpen = _reader->next(*_phone, faults);
    }
    for (std::string& fault : faults) {
        addFault(std::move(fault));
    }
    _contacts += _phone->contacts().size() - contacts;
    _messages += _phone->messages().size() - messages;
    if (!isOpen) {
        finishFile();
    }
}

void ImportTask::readPicture()
{
    constexpr std::size_t kLargest = std::size_t{512} << 20; // no larger one is shown
    const fs::path& file = _files[_file];
    if (!_stream.is_open()) {
        _stream.open(file, std::ios::binary);
    }
    const std::size_t before = _picture.size();
    _picture.resize(before + kMostBytes);
    _stream.read(_picture.data() + before, kMostBytes);
    _picture.resize(before + static_cast<std::size_t>(_stream.gcount()));
    if (_stream && _picture.size() < kLargest) {
        return;
    }
    if (_stream.bad() || !_stream.is_open()) {
        addFault(localised("“%s” cannot be read.", {nameOf(file)}));
    } else if (!ImageUtil::loadData_withLength(_picture.data(), static_cast<std::int64_t>(_picture.size()))) {
        addFault(localised("“%s” is neither a table nor a picture.", {nameOf(file)}));
    } else {
        _phone->pictures().push_back({file});
        ++_pictures;
    }
    finishFile();
}

void ImportTask::finishFile()
{
    _bytesBefore += sizeOf(_files[_file++]);
    end();
}

void ImportTask::end()
{
    _reader = nullptr;
    _stream = std::ifstream();
    _picture = std::string();
}
