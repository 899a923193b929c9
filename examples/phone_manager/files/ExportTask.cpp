#include "files/ExportTask.h"

#include "Resources.h"
#include "files/Csv.h"

#include <platform/foundation/NSDate.h>
#include <platform/foundation/NSURL.h>
#include <platform/graphics/NSImage.h>
#include <util/FileUtil.h>
#include <util/StringUtil.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

namespace fs = std::filesystem;

namespace
{

constexpr std::size_t kRecordsInSlice = 500;
constexpr NSSize kThumbnailSize{160.0, 160.0};
constexpr const char* kPage = "index.html";
constexpr const char* kThumbnails = "thumbnails/";
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

std::vector<std::string> fieldsOf(const Contact& contact)
{
    return {contact.name, contact.group, contact.number, contact.email};
}

std::vector<std::string> fieldsOf(const Message& message)
{
    return {message.kindName(), message.name, message.number, message.date, message.text};
}

std::string htmlEscaped(const std::string& utf8)
{
    static constexpr std::array kEntities{std::pair('&', "&amp;"), std::pair('<', "&lt;"),
                                          std::pair('>', "&gt;"), std::pair('"', "&quot;")};
    std::string html;
    for (const char character : utf8) {
        const auto* const entity =
            std::ranges::find(kEntities, character, &std::pair<char, const char*>::first);
        html += entity == kEntities.end() ? std::string(1, character) : entity->second;
    }
    return html;
}

/// A file's name as a part of a URL.
std::string urlEscaped(const std::string& name)
{
    return NSURL::fileURLWithPath(text('/' + name).get())->absoluteString()->UTF8String().substr(8);
}

std::string element(const std::string& tag, const std::string& utf8)
{
    std::string html = '<' + tag + '>';
    return html.append(htmlEscaped(utf8)).append("</").append(tag).append(">");
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

ExportTask* ExportTask::initWithPhone_folder(Ref<Phone> phone, const fs::path& folder)
{
    _phone = std::move(phone);
    _folder = folder.has_filename() ? folder : folder.parent_path(); // without a slash at the end
    if (_folder.filename() == "." || _folder.filename() == "..") {
        std::error_code error;
        _folder = fs::canonical(_folder, error);
    }
    return this;
}

double ExportTask::progress() const
{
    return state() == State::Done ? 1.0
                                  : static_cast<double>(_slicesDone) /
                                        static_cast<double>(std::max<std::size_t>(_slices.size(), 1));
}

std::string ExportTask::summary() const
{
    if (state() == State::Cancelled) {
        return localised("The export was cancelled.");
    }
    return _hasFolder ? localised("In “%s” are contacts: %s, messages: %s, pictures: %s.",
                                  {shownName(_folder.string()), std::to_string(_contacts),
                                   std::to_string(_messages), std::to_string(_pictures)})
                      : localised("Nothing was exported.");
}

void ExportTask::begin()
{
    _hasFolder = makeFolder();
    if (!_hasFolder) {
        addFault(localised("The folder “%s” cannot be made: nothing can be written there.",
                           {shownName(_folder.string())}));
        return;
    }
    const std::string title = localised("Phone Manager");
    _page.open(_folder / kPage, std::ios::binary);
    _page << kPageBegin << element("title", title) << "</head>\n<body>\n"
          << element("h1", title)
          << element("p", localised("Exported on %s", {shownDate(NSDate::date()->timeIntervalSince1970())}));
    addTable("contacts.csv", "Contacts", {"Name", "Group", "Number", "Email"}, _phone->contacts(), _contacts);
    addTable("messages.csv", "Messages", {"Kind", "Name", "Number", "Date", "Text"}, _phone->messages(),
             _messages);
    const std::vector<Picture> pictures = checked(_phone->pictures());
    if (!pictures.empty()) {
        FileUtil::Mkdir((_folder / kThumbnails).c_str()); // what fails shows with the first of them
        _slices.emplace_back([this] { _page << element("h2", localised("Pictures")); });
    }
    for (const Picture& picture : pictures) {
        _slices.emplace_back([this, file = picture.file] { writePicture(file); });
    }
    _slices.emplace_back([this] {
        _page << "</body>\n</html>\n";
        complete(_page, kPage);
    });
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

/// Has those that are checked written to a table and to the page.
template <class Record>
void ExportTask::addTable(const std::string& file, const char* title, const std::vector<std::string>& columns,
                          const std::vector<Record>& records, std::size_t& written)
{
    const auto rows = std::make_shared<const std::vector<Record>>(checked(records));
    if (rows->empty()) {
        return;
    }
    _slices.emplace_back([=, this] {
        std::vector<std::string> titles;
        std::ranges::transform(columns, std::back_inserter(titles),
                               [](const std::string& key) { return localised(key); });
        _table.open(_folder / file, std::ios::binary);
        _table << kMark << csvLine(columns);
        _page << element("h2", localised(title)) << "<table>\n" << tableRow(titles, "th");
    });
    for (std::size_t begin = 0; begin < rows->size(); begin += kRecordsInSlice) {
        _slices.emplace_back([=, this] {
            const std::size_t end = std::min(begin + kRecordsInSlice, rows->size());
            for (std::size_t row = begin; row < end; ++row) {
                std::vector<std::string> fields = fieldsOf((*rows)[row]);
                _table << csvLine(fields);
                if constexpr (std::is_same_v<Record, Message>) {
                    fields.front() = shownGroup(fields.front()); // the kind
                }
                _page << tableRow(fields);
            }
        });
    }
    _slices.emplace_back([=, this, &written] {
        _page << "</table>\n";
        written = complete(_table, file) ? rows->size() : 0;
    });
}

bool ExportTask::work()
{
    if (_slicesDone < _slices.size()) {
        _slices[_slicesDone++]();
    }
    return _slicesDone < _slices.size();
}

void ExportTask::end()
{
    if (state() == State::Cancelled && _hasFolder) {
        _table.close();
        _page.close();
        std::error_code error; // what cannot be removed stays
        fs::remove_all(_folder, error);
    }
}

/// Closes a file, or removes it if not all of it could be written.
bool ExportTask::complete(std::ofstream& stream, const std::string& name)
{
    stream.close();
    if (!stream) {
        removeFaulty(name);
    }
    return !stream.fail();
}

/// Leaves nothing of a file that could not be written, and tells.
void ExportTask::removeFaulty(const std::string& name)
{
    addFault(localised("“%s” cannot be written: the disk is full, or closed to us.", {name}));
    std::error_code error; // what cannot be removed stays
    fs::remove(_folder / name, error);
}

void ExportTask::writePicture(const fs::path& file)
{
    const std::string own = file.filename().string();
    const Ref<NSString> clean = StringUtil::sanitizeFileNameString(text(own).get());
    const std::string visible =
        !clean || own.starts_with('.') ? "picture" : ""; // others are not imported again
    const fs::path wanted = visible + StringUtil::NilToEmpty(clean.get())->UTF8String();
    // With a full stop at its end, so that none before it is taken for that of an extension.
    const Ref<NSString> path = FileUtil::getFilePathNewName_withPosfix(
        text((_folder / wanted.stem()).string() + '.').get(), text(wanted.extension().string()).get());
    std::error_code error;
    const fs::path source = fs::canonical(file, error); // of a link, what it leads to
    const fs::path copy = path->UTF8String();
    if (error || !FileUtil::Cp_To(source.c_str(), copy.c_str())) {
        addFault(localised("“%s” cannot be copied.", {shownName(own)}));
        return;
    }
    const std::string name = copy.filename().string();
    const std::string thumbnail = kThumbnails + std::to_string(++_pictures) + ".png";
    _page << "<figure><a href=\"./" << htmlEscaped(urlEscaped(name)) << "\">";
    if (writeThumbnail(copy, thumbnail)) {
        _page << "<img src=\"" << thumbnail << "\" alt=\"" << htmlEscaped(name) << "\"><br>";
    }
    _page << htmlEscaped(name) << "</a>" << element("figcaption", detailsOf(copy)) << "</figure>\n";
}

bool ExportTask::writeThumbnail(const fs::path& picture, const std::string& name)
{
    const Ref<NSImage> image = thumbnailOf(picture, kThumbnailSize);
    if (image && image->writePNGToFile((_folder / name).string())) {
        return true;
    }
    removeFaulty(name);
    return false;
}
