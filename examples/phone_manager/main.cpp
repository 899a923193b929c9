// A window with a column of tool buttons, coloured by a settings file.
//
//     phone_manager [SETTINGS]                 opens the window
//     phone_manager --snapshot DIR [SETTINGS]  writes pictures of it to DIR instead

#include "PageView.h"
#include "PhoneManager.h"

#include <platform/appkit/NSApplication.h>
#include <platform/appkit/NSEvent.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuToolButton.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace
{

std::string shippedSettings()
{
    const Ref<NSString> path = NSBundle::mainBundle()->pathForResource_ofType(
        NSString::stringWithUTF8String("settings").get(), NSString::stringWithUTF8String("json").get());
    return path ? path->UTF8String() : "settings.json";
}

bool writePicture(PhoneManager& manager, const std::filesystem::path& file)
{
    constexpr double kPixelsPerPoint = 2.0;
    const Ref<NSImage> picture = manager.page()->imageOfBounds(kPixelsPerPoint);
    if (!picture || !picture->writePNGToFile(file.string())) {
        std::fprintf(stderr, "%s cannot be written\n", file.c_str());
        return false;
    }
    std::printf("%s\n", file.c_str());
    return true;
}

/// Walks through the application as a user's pointer would. Works on copies of the settings.
bool writeSnapshots(const std::filesystem::path& folder, const std::string& settings)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    const std::filesystem::path copy = folder / "settings.json";
    std::filesystem::copy_file(settings, copy, std::filesystem::copy_options::overwrite_existing, error);
    if (error) {
        std::fprintf(stderr, "%s: %s\n", copy.c_str(), error.message().c_str());
        return false;
    }

    const Ref<PhoneManager> manager = make<PhoneManager>()->initWithSettingsFile(copy.string());
    bool written = writePicture(*manager, folder / "start.png");

    ZuToolButton& contacts = *manager->buttons()[1];
    const NSPoint middle = contacts.convertPoint_toView(
        {contacts.bounds().size.width * 0.5, contacts.bounds().size.height * 0.5}, nullptr);
    const auto event = [&](NSEventType type) {
        return NSEvent::mouseEventWithType_location_window(type, middle, nullptr);
    };
    contacts.mouseEntered(event(NSEventType::MouseEntered).get());
    written = writePicture(*manager, folder / "hover.png") && written;
    contacts.mouseDown(event(NSEventType::LeftMouseDown).get());
    written = writePicture(*manager, folder / "pressed.png") && written;
    contacts.mouseUp(event(NSEventType::LeftMouseUp).get());
    contacts.mouseExited(event(NSEventType::MouseExited).get());
    written = writePicture(*manager, folder / "opened.png") && written;

    const std::filesystem::path damaged = folder / "damaged-settings.json";
    std::ofstream(damaged) << "{ \"color_border\": \"32,186,";
    const Ref<PhoneManager> warned = make<PhoneManager>()->initWithSettingsFile(damaged.string());
    return writePicture(*warned, folder / "damaged-settings.png") && written;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool snapshot = !arguments.empty() && arguments[0] == "--snapshot";
    const std::size_t most = snapshot ? 3 : 1;
    const bool unknownOption = !snapshot && !arguments.empty() && arguments[0].starts_with("-");
    if ((snapshot && arguments.size() < 2) || arguments.size() > most || unknownOption) {
        std::fprintf(stderr, "usage: phone_manager [SETTINGS]\n"
                             "       phone_manager --snapshot DIR [SETTINGS]\n");
        return EXIT_FAILURE;
    }

    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const std::string settings = arguments.size() == most ? arguments.back() : shippedSettings();
    if (snapshot) {
        return writeSnapshots(arguments[1], settings) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (application->isOffscreen()) {
        std::fprintf(stderr, "There is no display to open a window on. Use --snapshot DIR for pictures.\n");
        return EXIT_FAILURE;
    }
    const Ref<PhoneManager> manager = make<PhoneManager>()->initWithSettingsFile(settings);
    manager->openWindow();
    return application->run();
}
