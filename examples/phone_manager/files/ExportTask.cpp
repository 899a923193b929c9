#include "files/ExportTask.h"

#include "Resources.h"
#include "files/Csv.h"

#include <algorithm>
#include <array>
#include <utility>

namespace fs = std::filesystem;

namespace
{

constexpr NSSize kThumbnailSize{160.0, 160.0};
constexpr double kPictureWeight = 200.0; // in rows of tables
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

std::string element(const std::string& tag, const std::string& utf8)
{
    std::string html = '<' + tag + '>';
    return html.append(htmlEscaped(utf8)).append("</").append(tag).append(">");
}

/// A file's name as a part of a URL.
std::string urlEscaped(const std::string& name)
{
    return NSURL::fileURLWithPath(text('/' + name).get())->absoluteString()->UTF8String().substr(8);
}

} // namespace

ExportTask::ExportTask(const Phone& phone, const fs::path& folder)
    : _folder(folder.has_filename() ? folder : folder.parent_path()) // without a slash at the end
{
    if (_folder.filename() == "." || _folder.filename() == "..") {
        std::error_code error;
        _folder = fs::weakly_canonical(_folder, error);
    }
    addStep([this] { return begin(); });
    Table contacts{"contacts.csv", "Contacts", 1, {{"Name", "Group", "Number", "Email"}}};
    for (const Contact& each : phone.contacts) {
        if (each.isChecked) {
            contacts.rows.push_back({each.name, each.group, each.number, each.email});
        }
    }
    addTable(std::move(contacts), _contacts);
    Table messages{"messages.csv", "Messages", 0, {{"Kind", "Name", "Number", "Date", "Text"}}};
    for (const Message& each : phone.messages) {
        if (each.isChecked) {
            messages.rows.push_back(
                {Message::kStates[each.state], each.name, each.number, each.date, each.text});
        }
    }
    addTable(std::move(messages), _messages);
    if (std::ranges::any_of(phone.pictures, &Picture::isChecked)) {
        addStep([this] {
            FileUtil::Mkdir((_folder / kThumbnails).c_str()); // what fails shows with the first of them
            _page << element("h2", localised("Pictures"));
            return 1.0;
        });
    }
    for (const Picture& each : phone.pictures) {
        if (each.isChecked) {
            addStep(
                [this, file = each.file] {
                    writePicture(file);
                    return 1.0;
                },
                kPictureWeight);
        }
    }
    addStep([this] {
        _page << "</body>\n</html>\n";
        complete(_page, kPage);
        return 1.0;
    });
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

/// Makes the folder and begins the page.
double ExportTask::begin()
{
    const Ref<NSString> free = FileUtil::getDirNewName(text(_folder.string()).get());
    const fs::path folder = StringUtil::NilToEmpty(free.get())->UTF8String();
    std::error_code error;
    fs::create_directories(folder.parent_path(), error); // what fails shows with the folder
    _hasFolder = fs::create_directory(folder, error);    // and none that came meanwhile
    if (!_hasFolder) {
        addFault(localised("The folder “%s” cannot be made: nothing can be written there.",
                           {shownName(_folder.string())}));
        finish();
        return 1.0;
    }
    _folder = folder;
    const std::string title = localised("Phone Manager");
    _page.open(_folder / kPage, std::ios::binary);
    _page << kPageBegin << element("title", title) << "</head>\n<body>\n"
          << element("h1", title)
          << element("p", localised("Exported on %s", {shownDate(NSDate::date()->timeIntervalSince1970())}));
    return 1.0;
}

void ExportTask::addTable(Table csv, std::size_t& written)
{
    if (const auto rows = static_cast<double>(csv.rows.size()); rows > 1.0) {
        addStep([this, csv = std::move(csv), &written]() mutable { return writeRows(csv, written); }, rows);
    }
}

double ExportTask::writeRows(Table& csv, std::size_t& written)
{
    std::size_t& row = csv.rowsWritten;
    if (row == 0) {
        _table.open(_folder / csv.file, std::ios::binary);
        _table << kMark;
        _page << element("h2", localised(csv.title)) << "<table>\n";
    }
    const std::size_t end = std::min(row + kRecordsInSlice, csv.rows.size());
    for (; row < end; ++row) {
        Fields& fields = csv.rows[row];
        _table << csvLine(fields);
        const auto [shown, isNew] = _shownGroups.try_emplace(fields[csv.groupColumn]);
        if (isNew) {
            shown->second = shownGroup(shown->first);
        }
        fields[csv.groupColumn] = shown->second;
        _page << "<tr>";
        for (const std::string& field : fields) {
            _page << (row == 0 ? element("th", localised(field)) : element("td", field));
        }
        _page << "</tr>\n";
    }
    if (row < csv.rows.size()) {
        return static_cast<double>(row) / static_cast<double>(csv.rows.size());
    }
    _page << "</table>\n";
    written = complete(_table, csv.file) ? row - 1 : 0;
    return 1.0;
}

void ExportTask::didCancel()
{
    if (_hasFolder) {
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
    const bool isWritten = !stream.fail();
    if (!isWritten) {
        removeFaulty(name);
    }
    return isWritten;
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
    const std::string visible = !clean || own[0] == '.' ? "picture" : ""; // others are not imported again
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
    const bool isWritten = image && image->writePNGToFile((_folder / name).string());
    if (!image) {
        addFault(localised("“%s” cannot be read.", {shownName(picture.filename().string())}));
    } else if (!isWritten) {
        removeFaulty(name);
    }
    return isWritten;
}
