// A window with a column of tool buttons, coloured by a settings file.
//
//     phone_manager [SETTINGS]                 opens the window
//     phone_manager --snapshot DIR [SETTINGS]  writes pictures of it to DIR instead

#include "BackupView.h"
#include "ContactsView.h"
#include "ImportView.h"
#include "PageView.h"
#include "PhoneManager.h"
#include "PhotoImport.h"

#include <basic/bas_user_defaults.h>
#include <platform/appkit/NSApplication.h>
#include <platform/appkit/NSEvent.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSLocale.h>
#include <platform/foundation/NSString.h>
#include <platform/foundation/NSUserDefaults.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuOutlineView.h>
#include <window/ZuSimpleButton.h>
#include <window/ZuToolButton.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace
{

/// What names the language of the texts.
Ref<NSString> languageKey()
{
    return NSString::stringWithUTF8String("Tavori");
}

/// Keeps a language for the user: the one chosen before, or else that of the environment if there are
/// texts in it.
void chooseLanguage()
{
    const Ref<NSUserDefaults> defaults = NSUserDefaults::standardUserDefaults();
    if (!defaults->objectForKey(languageKey().get())) {
        const bool german = NSLocale::currentLocale()->localeIdentifier()->UTF8String().starts_with("de");
        defaults->setObject_forKey(NSString::stringWithUTF8String(german ? "de" : "en").get(),
                                   languageKey().get());
    }
}

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

/// What the pointer does at a point of a view.
Ref<NSEvent> pointer(const NSView& view, NSEventType type, NSPoint point)
{
    return NSEvent::mouseEventWithType_location_window(type, view.convertPoint_toView(point, nullptr),
                                                       nullptr);
}

/// What it does in the middle.
Ref<NSEvent> pointer(const NSView& view, NSEventType type)
{
    const NSSize size = view.bounds().size;
    return pointer(view, type, {size.width * 0.5, size.height * 0.5});
}

void click(NSButton& button)
{
    button.mouseDown(pointer(button, NSEventType::LeftMouseDown).get());
    button.mouseUp(pointer(button, NSEventType::LeftMouseUp).get());
}

/// Clicks on the check image of a row.
void clickCheck(NSTableView& view, std::int64_t row)
{
    constexpr double kInImage = 12.0;
    const NSRect cell = view.frameOfCellAtColumn_row(0, row);
    const NSPoint point{cell.origin.x + kInImage, cell.origin.y + cell.size.height * 0.5};
    view.mouseDown(pointer(view, NSEventType::LeftMouseDown, point).get());
    view.mouseUp(pointer(view, NSEventType::LeftMouseUp, point).get());
}

/// Goes on until at least this part of all photos is imported, or no more will be.
void importPhotos(const ImportView& view, double part)
{
    const PhotoImport* import = view.photoImport();
    while (import != nullptr && import->state() == PhotoImport::State::Running &&
           static_cast<double>(import->finished()) < static_cast<double>(import->files().size()) * part) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
}

/// Opens the pages with tables, and checks something on each.
bool writeTables(PhoneManager& manager, const std::filesystem::path& folder)
{
    click(*manager.buttons()[1]);
    NSTableView& contacts = *manager.contactsView()->tableView();
    for (const std::int64_t row : {0, 2, 3, 7}) {
        clickCheck(contacts, row);
    }
    contacts.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(4).get(), false);
    const bool written = writePicture(manager, folder / "contacts.png");

    click(*manager.buttons()[4]);
    ZuOutlineView& backup = *manager.backupView()->outlineView();
    for (const std::int64_t kind : {1, 0}) {
        backup.expandItem(backup.itemAtRow(kind).get());
    }
    for (const std::int64_t row : {3, 8}) {
        clickCheck(backup, row);
    }
    return writePicture(manager, folder / "backups.png") && written;
}

/// Walks through the application as a user would, on settings files in `work`, and leaves pictures in
/// `folder`.
bool writePictures(const std::filesystem::path& folder, const std::filesystem::path& work)
{
    const Ref<PhoneManager> manager =
        make<PhoneManager>()->initWithSettingsFile((work / "settings.json").string());
    bool written = writePicture(*manager, folder / "start.png");

    ZuToolButton& contacts = *manager->buttons()[1];
    ZuToolButton& photos = *manager->buttons()[2];
    click(photos);
    written = writePicture(*manager, folder / "photos.png") && written;
    contacts.mouseEntered(pointer(contacts, NSEventType::MouseEntered).get());
    photos.mouseEntered(pointer(photos, NSEventType::MouseEntered).get());
    photos.mouseDown(pointer(photos, NSEventType::LeftMouseDown).get());
    written = writePicture(*manager, folder / "looks.png") && written;

    const Ref<PhoneManager> checking =
        make<PhoneManager>()->initWithSettingsFile((work / "settings.json").string());
    written = writeTables(*checking, folder) && written;

    const Ref<PhoneManager> importing =
        make<PhoneManager>()->initWithSettingsFile((work / "settings.json").string());
    // Beside the copy of the settings, wherever these would have it.
    BASUserDefaults::GetUserDefaults(PhoneManager::kSettings)->SetString("import_folder", "");
    click(*importing->buttons()[3]);
    click(*importing->importView()->importButton());
    importPhotos(*importing->importView(), 0.5);
    written = writePicture(*importing, folder / "import.png") && written;
    importPhotos(*importing->importView(), 1.0);
    written = writePicture(*importing, folder / "imported.png") && written;
    click(*importing->buttons()[2]);

    NSUserDefaults::standardUserDefaults()->setObject_forKey(NSString::stringWithUTF8String("de").get(),
                                                             languageKey().get());
    const Ref<PhoneManager> german =
        make<PhoneManager>()->initWithSettingsFile((work / "settings.json").string());
    written = writePicture(*german, folder / "german.png") && written;

    const std::filesystem::path damaged = work / "damaged.json";
    std::ofstream(damaged) << "{ \"color_border\": \"32,186,";
    const Ref<PhoneManager> warned = make<PhoneManager>()->initWithSettingsFile(damaged.string());
    return writePicture(*warned, folder / "damaged-settings.png") && written;
}

bool writeSnapshots(const std::filesystem::path& folder, const std::string& settings)
{
    std::error_code error;
    std::string work = (std::filesystem::temp_directory_path() / "phone_manager-XXXXXX").string();
    if (mkdtemp(work.data()) == nullptr) {
        std::perror(work.c_str());
        return false;
    }
    std::filesystem::create_directories(folder, error);
    std::filesystem::copy_file(settings, std::filesystem::path(work) / "settings.json", error);
    if (error) {
        std::fprintf(stderr, "%s: %s\n", settings.c_str(), error.message().c_str());
    }
    NSUserDefaults::setStandardDomain(NSString::stringWithUTF8String((work + "/defaults.ini").c_str()).get());
    chooseLanguage();
    const bool written = !error && writePictures(folder, work);
    std::filesystem::remove_all(work, error);
    return written;
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
    chooseLanguage();
    const Ref<PhoneManager> manager = make<PhoneManager>()->initWithSettingsFile(settings);
    manager->openWindow();
    return application->run();
}
