#include "ExportTask.h"

#include "Csv.h"
#include "Texts.h"

#include <platform/foundation/NSDate.h>
#include <platform/graphics/NSImage.h>
#include <util/FileUtil.h>
#include <util/ImageUtil.h>
#include <util/StringUtil.h>
#include <util/SystemUtil.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

/// A file that has its name only when it is complete, and until then one with ".part" behind it.
class NewFile
{
public:
    explicit NewFile(fs::path path) : _path(std::move(path)), _stream(part(), std::ios::binary) {}
    ~NewFile()
    {
        std::error_code error; // there is none if it was completed
        fs::remove(part(), error);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// What fails is told by `complete`.
    void write(const std::string& bytes) { _stream << bytes; }
    bool complete()
    {
        _stream.close();
        std::error_code error;
        if (_stream) {
            fs::rename(part(), _path, error);
        }
        return _stream && !error;
    }

private:
    fs::path part() const { return _path.string() + ".part"; }

    fs::path _path;
    std::ofstream _stream;
};

namespace
{

constexpr std::size_t kRecordsInSlice = 500;
constexpr NSSize kThumbnailSize{160.0, 160.0};
constexpr const char* kMark = "\uFEFF"; // by which spreadsheets know UTF-8
constexpr const char* kPageBegin =
    "<!DOCTYPE html>\n<html>\n<head>\n"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\n"
    "<style>\n"
    "body { font-family: Arial, sans-serif; margin: 2em; }\n"
    "td, th { padding: 0.3em 1em 0.3em 0; text-align: left; vertical-align: top; }\n"
    "td { white-space: pre-wrap; }\n"
    "figure { display: inline-block; margin: 1em; }\n"
    "</style>\n";

template <class Record> std::vector<Record> checked(const std::vector<Record>& records)
{
    std::vector<Record> result;
    std::ranges::copy_if(records, std::back_inserter(result), &Record::isChecked);
    return result;
}

std::vector<std::string> cells(const Contact& contact)
{
    return {contact.name, contact.group, contact.number, contact.email};
}

template <class Names> std::vector<std::string> cells(const Message& message, const Names& kinds)
{
    return {kinds[static_cast<std::size_t>(message.kind)], message.name, message.number, message.date,
            message.text};
}

std::string dateText(double secondsSince1970)
{
    const Ref<NSString> date = SystemUtil::DateToString_withFormat(
        NSDate::dateWithTimeIntervalSince1970(secondsSince1970).get(), text("d MMMM yyyy, HH:mm").get());
    return StringUtil::NilToEmpty(date.get())->UTF8String();
}

std::string htmlEscaped(const std::string& utf8)
{
    static constexpr std::array kEntities{std::pair('&', "&amp;"), std::pair('<', "&lt;"),
                                          std::pair('>', "&gt;"), std::pair('"', "&quot;")};
    std::string html;
    for (const char character : utf8) {
        const auto entity = std::ranges::find(kEntities, character, &std::pair<char, const char*>::first);
        html += entity == kEntities.end() ? std::string(1, character) : entity->second;
    }
    return html;
}

/// A file's name as a part of a URL.
std::string urlEscaped(const std::string& utf8)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string url;
    for (const char character : utf8) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || character == '.') {
            url += character;
        } else {
            url.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
        }
    }
    return url;
}

std::string element(const std::string& tag, const std::string& utf8)
{
    return std::string("<")
        .append(tag)
        .append(">")
        .append(htmlEscaped(utf8))
        .append("</")
        .append(tag)
        .append(">");
}

std::string tableRow(const std::vector<std::string>& cells, const char* tag = "td")
{
    std::string row = "<tr>";
    for (const std::string& cell : cells) {
        row += element(tag, cell);
    }
    return row + "</tr>\n";
}

} // namespace

ExportTask::ExportTask() = default;

ExportTask::~ExportTask() = default;

ExportTask* ExportTask::initWithPhone_folder(Ref<Phone> phone, const fs::path& folder)
{
    _phone = std::move(phone);
    _folder = folder.has_filename() ? folder : folder.parent_path(); // without a slash at the end
    return this;
}

double ExportTask::progress() const
{
    const double part =
        static_cast<double>(_slicesDone) / static_cast<double>(std::max<std::size_t>(_slices, 1));
    return state() == State::Done ? 1.0 : part;
}

std::string ExportTask::summary() const
{
    if (!_hasFolder) {
        return localised("Nothing was exported.");
    }
    const std::string written = localised("In “%s” are contacts: %s, messages: %s, pictures: %s.",
                                          {shownName(_folder.string()), std::to_string(contacts()),
                                           std::to_string(messages()), std::to_string(pictures())});
    return state() == State::Cancelled ? localised("The export was cancelled.") + ' ' + written : written;
}

void ExportTask::begin()
{
    _hasFolder = makeFolder();
    if (!_hasFolder) {
        addFault(localised("The folder “%s” cannot be made: nothing can be written there.",
                           {shownName(_folder.string())}));
        return;
    }
    _contacts = checked(_phone->contacts());
    _messages = checked(_phone->messages());
    _pictures = checked(_phone->pictures());
    if (!_contacts.empty()) {
        addFile("contacts.csv",
                {constant(kMark + csvLine({"name", "group", "number", "email"})),
                 {_contacts.size(), [this](std::size_t place) { return csvLine(cells(_contacts[place])); }}});
    }
    if (!_messages.empty()) {
        addFile("messages.csv", {constant(kMark + csvLine({"kind", "name", "number", "date", "text"})),
                                 {_messages.size(), [this](std::size_t place) {
                                      return csvLine(cells(_messages[place], Message::kKindNames));
                                  }}});
    }
    _steps.push_back({_pictures.size(), 1, [this](std::size_t place) { copyPicture(_pictures[place]); }});
    addFile("index.html", page());
    for (const Step& step : _steps) {
        _slices += (step.count + step.inSlice - 1) / step.inSlice;
    }
}

bool ExportTask::makeFolder()
{
    const Ref<NSString> free = FileUtil::getDirNewName(text(_folder.string()).get());
    std::error_code error;
    if (!free || !FileUtil::Mkdir(free->UTF8String().c_str()) ||
        !fs::is_directory(free->UTF8String(), error)) {
        return false;
    }
    _folder = free->UTF8String();
    return true;
}

ExportTask::Part ExportTask::constant(const std::string& text)
{
    return {1, [text](std::size_t) { return text; }};
}

/// Has a file of these parts written.
void ExportTask::addFile(const std::string& name, std::vector<Part> parts)
{
    _steps.push_back({1, 1, [=, this](std::size_t) { _file = std::make_unique<NewFile>(_folder / name); }});
    for (Part& part : parts) {
        _steps.push_back({part.count, kRecordsInSlice, [this, part = std::move(part)](std::size_t place) {
                              _file->write(part.text(place));
                          }});
    }
    _steps.push_back({1, 1, [=, this](std::size_t) {
                          if (_file->complete()) {
                              _written.push_back(name);
                          } else {
                              addWriteFault(name);
                          }
                          _file = nullptr;
                      }});
}

void ExportTask::addWriteFault(const std::string& name)
{
    addFault(localised("“%s” cannot be written: the disk is full, or closed to us.", {name}));
}

bool ExportTask::hasWritten(const std::string& name) const
{
    return std::ranges::find(_written, name) != _written.end();
}

bool ExportTask::work()
{
    while (_step < _steps.size() && _next == _steps[_step].count) {
        ++_step;
        _next = 0;
    }
    if (_step == _steps.size()) {
        return false;
    }
    const Step& step = _steps[_step];
    const std::size_t end = std::min(_next + step.inSlice, step.count);
    while (_next < end) {
        step.perform(_next++);
    }
    ++_slicesDone;
    return true;
}

void ExportTask::end()
{
    _file = nullptr; // of a file that is not complete nothing stays
}

void ExportTask::copyPicture(const Picture& picture)
{
    const std::string own = picture.file.filename().string();
    const Ref<NSString> clean = StringUtil::sanitizeFileNameString(text(own).get());
    const fs::path wanted = clean ? clean->UTF8String() : "picture"; // for a name that is no text
    const fs::path folder = _folder / "pictures";
    // With a full stop at its end, so that none before it is taken for that of an extension.
    const Ref<NSString> path = FileUtil::getFilePathNewName_withPosfix(
        text((folder / wanted.stem()).string() + '.').get(), text(wanted.extension().string()).get());
    std::error_code error;
    const fs::path source = fs::canonical(picture.file, error); // of a link, what it leads to
    if (error || !FileUtil::Mkdir(folder.c_str()) ||
        !FileUtil::Cp_To(source.c_str(), path->UTF8String().c_str())) {
        addFault(localised("“%s” cannot be copied.", {shownName(own)}));
        return;
    }
    const fs::path copy = path->UTF8String();
    const auto written = fs::last_write_time(copy, error);
    const std::chrono::duration<double> moment = std::chrono::file_clock::to_sys(written).time_since_epoch();
    const auto bytes = static_cast<std::uint64_t>(FileUtil::getFileSize(copy.c_str()));
    const std::string name = copy.filename().string();
    _copies.push_back(
        {name, FileUtil::QxGetFormatSizeFromBytes(bytes)->UTF8String() + ", " + dateText(moment.count()),
         writeThumbnail(name)});
}

bool ExportTask::writeThumbnail(const std::string& name)
{
    const fs::path folder = _folder / "thumbnails";
    const fs::path file = folder / (name + ".png");
    const Ref<NSImage> image =
        make<NSImage>()->initWithContentsOfFile(text((_folder / "pictures" / name).string()).get());
    NSSize size =
        image ? ImageUtil::getEqualScaleImageSize_imageSize(kThumbnailSize, image->size()) : NSSize();
    size = {std::max(size.width, 1.0), std::max(size.height, 1.0)}; // of one that is long and thin
    if (image && FileUtil::Mkdir(folder.c_str()) &&
        ImageUtil::resizeImage_size(image.get(), size)->writePNGToFile(file.string())) {
        return true;
    }
    std::error_code error; // a part of it may be there
    fs::remove(file, error);
    addWriteFault(file.filename().string());
    return false;
}

std::vector<ExportTask::Part> ExportTask::page() const
{
    std::vector<Part> parts;
    const auto addTable = [&](const char* name, const std::vector<const char*>& columns, Part rows) {
        if (rows.count > 0) {
            std::vector<std::string> titles;
            std::ranges::transform(columns, std::back_inserter(titles),
                                   [](const char* key) { return localised(key); });
            parts.push_back(constant(element("h2", localised(name)) + "<table>\n" + tableRow(titles, "th")));
            parts.push_back(std::move(rows));
            parts.push_back(constant("</table>\n"));
        }
    };
    const std::string title = localised("Phone Manager");
    parts.push_back(constant(
        kPageBegin + element("title", title) + "</head>\n<body>\n" + element("h1", title) +
        element("p", localised("Exported on %s", {dateText(NSDate::date()->timeIntervalSince1970())}))));
    addTable("Contacts", {"Name", "Group", "Telephone", "E-mail"},
             {_contacts.size(), [this](std::size_t place) { return tableRow(cells(_contacts[place])); }});
    const std::array kinds{localised("Received"), localised("Sent"), localised("Failed")};
    addTable("Messages", {"Kind", "Name", "Telephone", "Date", "Text"},
             {_messages.size(),
              [this, kinds](std::size_t place) { return tableRow(cells(_messages[place], kinds)); }});
    if (!_pictures.empty()) {
        parts.push_back(constant(element("h2", localised("Pictures"))));
        parts.push_back({_pictures.size(), [this](std::size_t place) {
                             return place < _copies.size() ? figure(_copies[place]) : ""; // some failed
                         }});
    }
    parts.push_back(constant("</body>\n</html>\n"));
    return parts;
}

/// A picture of the page, which leads to the copy.
std::string ExportTask::figure(const Copy& copy)
{
    const std::string name = htmlEscaped(copy.name);
    const std::string thumbnail =
        "<img src=\"thumbnails/" + urlEscaped(copy.name) + ".png\" alt=\"" + name + "\"><br>";
    return "<figure><a href=\"pictures/" + urlEscaped(copy.name) + "\">" +
           (copy.hasThumbnail ? thumbnail : "") + name + "</a><figcaption>" + htmlEscaped(copy.caption) +
           "</figcaption></figure>\n";
}
