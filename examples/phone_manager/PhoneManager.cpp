#include "PhoneManager.h"

#include "PageView.h"

#include <basic/bas_user_defaults.h>
#include <platform/appkit/NSWindow.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuToolButton.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace
{

struct Kind {
    const char* key; // in the settings; also the name of the icon
    const char* name;
    const char* description;
    const char* badge; // null for none
    const char* page;
};
constexpr std::array kKinds{
    Kind{"messages", "Messages", "Conversations with names and numbers, the newest first.", "new",
         "The message list of the connected phone."},
    Kind{"contacts", "Contacts", "People with their numbers and addresses, to check and export.", nullptr,
         "The address book of the connected phone."},
    Kind{"photos", "Photos", "Pictures from the camera roll, with the folders that they came from.", nullptr,
         "The camera roll of the connected phone."},
};

struct Accent {
    const char* name;
    const char* color;
};
constexpr std::array kAccents{Accent{"Sky", "32,186,234"}, Accent{"Meadow", "52,152,83"},
                              Accent{"Sunset", "224,104,32"}, Accent{"Violet", "126,87,194"}};

constexpr int kMostOpened = 1'000'000'000; // that is counted
constexpr NSSize kWindowSize{760.0, 420.0};
constexpr double kMargin = 12.0;
constexpr double kButtonHeight = 84.0;
constexpr std::array kSelectors{
    selector<&PhoneManager::openKind>("openKind:"),
    selector<&PhoneManager::changeAppearance>("changeAppearance:"),
};

Ref<NSString> text(const std::string& utf8)
{
    return NSString::stringWithUTF8String(utf8.c_str());
}

Ref<NSImage> icon(const std::string& name)
{
    const Ref<NSString> path =
        NSBundle::mainBundle()->pathForResource_ofType(text(name + "@2x").get(), text("png").get());
    return make<NSImage>()->initWithContentsOfFile(path.get());
}

Ref<ZuToolButton> toolButton(std::size_t row, const char* image, const char* name, const char* description)
{
    const double y = kMargin + static_cast<double>(row) * (kButtonHeight + kMargin);
    const NSRect frame = NSMakeRect(kMargin, y, PageView::kColumnWidth - 2.0 * kMargin, kButtonHeight);
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(frame);
    button->setImage(icon(image));
    button->setTitle(text(name));
    button->setToolTip(text(description));
    return button;
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
    applyColors();

    const std::string last = _settings->HasMember("kind") ? _settings->GetString("kind") : "";
    const auto kind = std::ranges::find(kKinds, last, &Kind::key);
    showKind(kind == kKinds.end() ? 0 : static_cast<std::size_t>(kind - kKinds.begin()));
    showSettingsState();
    return this;
}

void PhoneManager::buildButtons()
{
    for (const Kind& kind : kKinds) {
        Ref<ZuToolButton> button = toolButton(_buttons.size(), kind.key, kind.name, kind.description);
        if (kind.badge != nullptr) {
            button->setAlternateImage(icon("badge"));
            button->setAlternateTitle(text(kind.badge));
        }
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
            if (_settings->HasMember(key)) { // else the button's own colour stays
                constexpr double kFull = 255.0;
                const BASRGB rgb = _settings->GetRGB(key);
                ((*button).*setter)(NSColor::colorWithSRGBRed_green_blue_alpha(
                    rgb.red / kFull, rgb.green / kFull, rgb.blue / kFull, 1.0));
            }
        }
        if (_settings->HasMember("icon_offset")) {
            button->setOffset(_settings->GetInt("icon_offset"));
        }
        button->setNeedsDisplay();
    }
}

void PhoneManager::showKind(std::size_t kind)
{
    const std::string key = openedKey(kKinds[kind]);
    const int opened = _settings->HasMember(key.c_str()) ? _settings->GetInt(key.c_str()) : 0;
    _page->setHeadline(kKinds[kind].name);
    _page->setText(std::string(kKinds[kind].page) + "\nOpened " + std::to_string(opened) +
                   (opened == 1 ? " time." : " times."));
}

void PhoneManager::showSettingsState()
{
    const std::string path = text(_path) ? _path : "a file whose name is no text";
    if (!_writable) {
        _page->setNote("The settings in “" + path +
                       "” cannot be read: the file is damaged, or closed to us. Built-in settings are in "
                       "use, and nothing is saved, so that the file stays as it is.");
    } else if (!_settings->IsOk()) {
        _page->setNote("There are no settings in “" + path + "” yet. They are saved with the first change.");
    } else {
        _page->setNote("Settings: " + std::filesystem::path(path).filename().string());
    }
}

void PhoneManager::save(const std::string& done)
{
    if (_writable) { // else the note about the damaged file stays
        const bool open = static_cast<bool>(std::ofstream(_path, std::ios::app)); // a save does not tell
        _settings->WriteAll();
        _page->setNote(open ? done : "The settings cannot be saved: the file is closed to us.");
    }
}

void PhoneManager::openWindow()
{
    const std::string title = _settings->HasMember("title") ? _settings->GetString("title") : "Phone Manager";
    _window = make<NSWindow>()->initWithContentRect_styleMask(
        {{160.0, 200.0}, kWindowSize},
        NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable);
    _window->setTitle(text(title));
    _window->setContentView(_page);
    _window->makeKeyAndOrderFront();
}

void PhoneManager::openKind(NSObject* sender)
{
    const auto button = std::ranges::find_if(_buttons, [&](const auto& each) { return each == sender; });
    const auto index = static_cast<std::size_t>(button - _buttons.begin());
    if (index >= kKinds.size()) {
        return;
    }
    const std::string key = openedKey(kKinds[index]);
    const int opened = _settings->HasMember(key.c_str()) ? _settings->GetInt(key.c_str()) : 0;
    _settings->SetInt(key.c_str(), std::clamp(opened, 0, kMostOpened - 1) + 1);
    _settings->SetString("kind", kKinds[index].key);
    showKind(index);
    save(std::string(kKinds[index].name) + " will be open at the next start.");
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
    save(std::string("The buttons are in ") + next.name + " from now on.");
}
