#include "PhoneManager.h"

#include "BackupView.h"
#include "ContactsView.h"
#include "ImportView.h"
#include "Look.h"
#include "MessagesView.h"
#include "PageView.h"
#include "Texts.h"

#include <basic/bas_user_defaults.h>
#include <platform/appkit/NSWindow.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSDate.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/CGImage.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSImage.h>
#include <util/FileUtil.h>
#include <util/ImageUtil.h>
#include <util/StringUtil.h>
#include <util/SystemUtil.h>
#include <window/ZuToolButton.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>

namespace
{

struct Kind {
    const char* key; // in the settings; also the name of the icon
    const char* name;
    const char* description;
    const char* badge; // null for none
    const char* page;  // null for one that cannot be opened
};
constexpr std::array kKinds{
    Kind{"messages", "Messages", "Conversations with names and numbers, the newest first.", "new",
         "The message list of the connected phone."},
    Kind{"contacts", "Contacts", "People with their numbers and addresses, to check and export.", nullptr,
         "The address book of the connected phone."},
    Kind{"photos", "Photos", "Pictures from the camera roll, with the folders that they came from.", nullptr,
         "The camera roll of the connected phone."},
    Kind{"import", "Import", "Copies the photos of the phone to a folder on this computer.", nullptr,
         "What is on the phone stays there."},
    Kind{"backups", "Backups", "What the last backup holds, to choose what is restored.", nullptr,
         "The last backup of the connected phone."},
    Kind{"calendar", "Calendar", "This phone keeps no calendar.", nullptr, nullptr},
};
constexpr std::string_view kMessages = "messages";
constexpr std::string_view kContacts = "contacts";
constexpr std::string_view kPhotos = "photos";
constexpr std::string_view kImport = "import";
constexpr std::string_view kBackups = "backups";

struct Accent {
    const char* name;
    const char* color;
};
constexpr std::array kAccents{Accent{"Sky", "32,186,234"}, Accent{"Meadow", "52,152,83"},
                              Accent{"Sunset", "224,104,32"}, Accent{"Violet", "126,87,194"}};

constexpr int kMostOpened = 1'000'000'000; // that is counted
constexpr NSSize kWindowSize{760.0, 600.0};
constexpr double kMargin = 12.0;
constexpr double kButtonHeight = 72.0;
constexpr std::array kSelectors{
    selector<&PhoneManager::openKind>("openKind:"),
    selector<&PhoneManager::changeAppearance>("changeAppearance:"),
};

/// The look of an icon that cannot be used.
Ref<NSImage> grayIcon(NSImage* icon)
{
    // By way of an image with one pixel to the point: of others, only a part would be greyed.
    const Ref<NSImage> pixels =
        make<NSImage>()->initWithCGImage_size(ImageUtil::nsImageToCGImageRef(icon).get(), {});
    const Ref<NSImage> gray = ImageUtil::convertToGray(pixels.get());
    return make<NSImage>()->initWithCGImage_size(ImageUtil::nsImageToCGImageRef(gray.get()).get(),
                                                 icon->size());
}

Ref<ZuToolButton> toolButton(std::size_t row, const char* image, const char* name, const char* description)
{
    const double y = kMargin + static_cast<double>(row) * (kButtonHeight + kMargin);
    const NSRect frame = NSMakeRect(kMargin, y, PageView::kColumnWidth - 2.0 * kMargin, kButtonHeight);
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(frame);
    button->setFocusRingType(NSFocusRingType::Default);
    button->setImage(icon(image));
    button->setTitle(text(localised(name)));
    button->setToolTip(text(localised(description)));
    return button;
}

/// A photo of the list: small, with the size and the date of its file.
std::optional<PageView::Item> photo(const std::filesystem::path& file)
{
    const Ref<NSImage> picture = make<NSImage>()->initWithContentsOfFile(text(file.string()).get());
    std::error_code error;
    const auto written = std::filesystem::last_write_time(file, error);
    if (!picture || error) {
        return std::nullopt;
    }
    const NSSize size = ImageUtil::getEqualScaleImageSize_imageSize(PageView::kPictureSize, picture->size());
    const auto bytes = static_cast<std::uint64_t>(FileUtil::getFileSize(file.c_str()));
    const std::chrono::duration<double> moment = std::chrono::file_clock::to_sys(written).time_since_epoch();
    const Ref<NSString> date = SystemUtil::DateToString_withFormat(
        NSDate::dateWithTimeIntervalSince1970(moment.count()).get(), text("d MMMM yyyy, HH:mm").get());
    return PageView::Item{ImageUtil::resizeImage_size(picture.get(), size),
                          StringUtil::SpliteString(text(file.string()).get()),
                          text(FileUtil::QxGetFormatSizeFromBytes(bytes)->UTF8String() + "\n" +
                               StringUtil::NilToEmpty(date.get())->UTF8String())};
}

/// The files of the photos that are shipped with the program, by name.
std::vector<std::filesystem::path> photoFiles()
{
    const Ref<NSString> resources = FileUtil::GetResourcesDir();
    if (!resources) {
        return {};
    }
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::directory_iterator entry(resources->UTF8String() + "Photos", error);
    for (; entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (entry->is_regular_file(error)) {
            files.push_back(entry->path());
        }
    }
    std::ranges::sort(files);
    return files;
}

std::vector<PageView::Item> photos()
{
    std::vector<PageView::Item> items;
    for (const std::filesystem::path& file : photoFiles()) {
        if (auto item = photo(file)) {
            items.push_back(std::move(*item));
        }
    }
    return items;
}

/// What `read` finds in a file that is shipped with the program.
template <class Entries> Entries shipped(const char* name, Entries (&read)(const std::filesystem::path& file))
{
    const Ref<NSString> file =
        NSBundle::mainBundle()->pathForResource_ofType(text(name).get(), text("txt").get());
    return file ? read(file->UTF8String()) : Entries();
}

/// What the last backup holds.
std::vector<BackupKind> backup()
{
    return {
        {"Contacts", "contacts", {{"Family", 5}, {"Friends", 10}, {"Work", 9}}},
        {"Messages", "messages", {{"Inbox", 412}, {"Sent", 388}, {"Drafts", 3}}},
        {"Photos", "photos", {{"Camera", 1204}, {"Screenshots", 86}, {"Saved pictures", 41}}},
    };
}

/// Null if there is no such setting.
Ref<NSColor> colorSetting(const BASUserDefaults& settings, const char* key)
{
    if (!settings.HasMember(key)) {
        return nullptr;
    }
    constexpr double kFull = 255.0;
    const BASRGB rgb = settings.GetRGB(key);
    return NSColor::colorWithSRGBRed_green_blue_alpha(rgb.red / kFull, rgb.green / kFull, rgb.blue / kFull,
                                                      1.0);
}

std::string openedKey(const Kind& kind)
{
    return std::string("opened_") + kind.key;
}

} // namespace

constinit const ClassTable PhoneManager::table{"PhoneManager", &NSObject::table, {}, kSelectors};

const ClassTable& PhoneManager::classTable() const
{
    return table;
}

PhoneManager::PhoneManager() = default;

PhoneManager::~PhoneManager() = default;

PhoneManager* PhoneManager::initWithSettingsFile(const std::string& path)
{
    const bool loaded = BASUserDefaults::InitUserDefaults(kSettings, path.c_str());
    _settings = BASUserDefaults::GetUserDefaults(kSettings);
    _path = path;
    std::error_code error; // where nobody may look, there may be something
    _writable = loaded || (!std::filesystem::exists(path, error) && !error);

    _page = make<PageView>()->initWithFrame({{}, kWindowSize});
    buildButtons();
    _messagesView = make<MessagesView>()->initWithFrame(_page->contentRect());
    _messagesView->setMessages(shipped("messages", readMessages));
    _page->addSubview(_messagesView);
    _contactsView = make<ContactsView>()->initWithFrame(_page->contentRect());
    _contactsView->setContacts(shipped("contacts", readContacts));
    _page->addSubview(_contactsView);
    _importView = make<ImportView>()->initWithFrame(_page->contentRect());
    _page->addSubview(_importView);
    _backupView = make<BackupView>()->initWithFrame(_page->contentRect());
    _backupView->setKinds(backup());
    _page->addSubview(_backupView);
    applyColors();

    const std::string last = _settings->HasMember("kind") ? _settings->GetString("kind") : "";
    const auto kind = std::ranges::find(kKinds, last, &Kind::key);
    const bool available = kind != kKinds.end() && kind->page != nullptr;
    showKind(available ? static_cast<std::size_t>(kind - kKinds.begin()) : 0);
    showSettingsState();
    return this;
}

void PhoneManager::buildButtons()
{
    for (const Kind& kind : kKinds) {
        Ref<ZuToolButton> button = toolButton(_buttons.size(), kind.key, kind.name, kind.description);
        if (kind.badge != nullptr) {
            button->setAlternateImage(icon("badge"));
            button->setAlternateTitle(text(localised(kind.badge)));
        }
        if (kind.page == nullptr && button->image()) {
            button->setImage(grayIcon(button->image().get()));
        }
        button->setEnabled(kind.page != nullptr);
        button->setAction(SEL{"openKind:"});
        _buttons.push_back(button);
    }
    Ref<ZuToolButton> appearance =
        toolButton(_buttons.size(), "appearance", "Appearance", "Changes the colour of the buttons.");
    appearance->setAction(SEL{"changeAppearance:"});
    _buttons.push_back(appearance);

    for (const Ref<ZuToolButton>& button : _buttons) {
        button->setTarget(this);
        _page->addSubview(button);
    }
}

void PhoneManager::applyColors()
{
    using Setter = void (ZuToolButton::*)(Ref<NSColor>);
    static constexpr std::array<std::pair<const char*, Setter>, 6> kColors{{
        {"color_border", &ZuToolButton::setColor_border},
        {"color_border_normal", &ZuToolButton::setColor_border_normal},
        {"color_background", &ZuToolButton::setColor_background},
        {"color_desc", &ZuToolButton::setColor_desc},
        {"color_name_hover", &ZuToolButton::setColor_name_hover},
        {"color_desc_hover", &ZuToolButton::setColor_desc_hover},
    }};
    for (const Ref<ZuToolButton>& button : _buttons) {
        for (const auto& [key, setter] : kColors) {
            if (const Ref<NSColor> color = colorSetting(*_settings, key)) { // else the button's own stays
                ((*button).*setter)(color);
            }
        }
        if (_settings->HasMember("icon_offset")) {
            button->setOffset(_settings->GetInt("icon_offset"));
        }
        button->setNeedsDisplay();
    }
    if (const Ref<NSColor> color = colorSetting(*_settings, "color_border")) {
        _importView->setAccent(color);
    }
}

std::filesystem::path PhoneManager::importFolder() const
{
    const std::string wanted =
        _settings->HasMember("import_folder") ? _settings->GetString("import_folder") : "";
    return std::filesystem::path(_path).parent_path() /
           (wanted.empty() ? localised("Imported photos") : wanted);
}

void PhoneManager::showKind(std::size_t kind)
{
    const std::string key = openedKey(kKinds[kind]);
    const int opened = _settings->HasMember(key.c_str()) ? _settings->GetInt(key.c_str()) : 0;
    const std::string times =
        opened == 1 ? localised("Opened once.") : localised("Opened %s times.", {std::to_string(opened)});
    _page->setHeadline(localised(kKinds[kind].name));
    _page->setText(localised(kKinds[kind].page) + '\n' + times);
    _page->setItems(kKinds[kind].key == kPhotos ? photos() : std::vector<PageView::Item>());
    _messagesView->setHidden(kKinds[kind].key != kMessages);
    _contactsView->setHidden(kKinds[kind].key != kContacts);
    _importView->setHidden(kKinds[kind].key != kImport);
    _backupView->setHidden(kKinds[kind].key != kBackups);
    if (!_importView->isHidden()) {
        _importView->setFiles_folder(photoFiles(), importFolder());
    }
}

void PhoneManager::showSettingsState()
{
    const std::string path = shownName(_path);
    if (!_writable) {
        _page->setNote(localised("The settings in “%s” cannot be read: the file is damaged, or closed to us. "
                                 "Built-in settings are in use, and nothing is saved, so that the file stays "
                                 "as it is.",
                                 {path}));
    } else if (!_settings->IsOk()) {
        _page->setNote(
            localised("There are no settings in “%s” yet. They are saved with the first change.", {path}));
    } else {
        _page->setNote(localised("Settings: %s", {std::filesystem::path(path).filename().string()}));
    }
}

void PhoneManager::save(const std::string& done)
{
    if (_writable) { // else the note about the damaged file stays
        const bool open = static_cast<bool>(std::ofstream(_path, std::ios::app)); // a save does not tell
        _settings->WriteAll();
        _page->setNote(open ? done : localised("The settings cannot be saved: the file is closed to us."));
    }
}

void PhoneManager::openWindow()
{
    const std::string title = _settings->HasMember("title") ? _settings->GetString("title") : "Phone Manager";
    _window = make<NSWindow>()->initWithContentRect_styleMask(
        {{160.0, 120.0}, kWindowSize},
        NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable);
    _window->setTitle(text(localised(title)));
    _window->setContentView(_page);
    _window->makeKeyAndOrderFront();
}

void PhoneManager::openKind(NSObject* sender)
{
    const auto button = std::ranges::find_if(_buttons, [&](const auto& each) { return each == sender; });
    const auto index = static_cast<std::size_t>(button - _buttons.begin());
    if (index >= kKinds.size() || kKinds[index].page == nullptr) {
        return;
    }
    const std::string key = openedKey(kKinds[index]);
    const int opened = _settings->HasMember(key.c_str()) ? _settings->GetInt(key.c_str()) : 0;
    _settings->SetInt(key.c_str(), std::clamp(opened, 0, kMostOpened - 1) + 1);
    _settings->SetString("kind", kKinds[index].key);
    showKind(index);
    save(localised("%s will be open at the next start.", {localised(kKinds[index].name)}));
}

void PhoneManager::changeAppearance(NSObject* /*sender*/)
{
    const std::string current =
        _settings->HasMember("color_border") ? _settings->GetString("color_border") : "";
    const auto accent = std::ranges::find(kAccents, current, &Accent::color);
    const Accent& next =
        accent == kAccents.end() || accent + 1 == kAccents.end() ? kAccents.front() : *(accent + 1);
    _settings->SetString("color_border", next.color);
    _settings->SetString("color_background", next.color);
    applyColors();
    save(localised("The buttons are in %s from now on.", {localised(next.name)}));
}
