// Manages what is on a phone: contacts, messages and pictures from files, to look at, check and export.
//
//     phone_manager [--settings FILE] [FILE...]      opens the window, and imports the files
//     phone_manager --import FILE... --export DIR [--charset NAME]
//                                                    does that without a window
//     phone_manager --snapshot DIR [FILE...]         writes pictures of all pages instead

#include "Headless.h"
#include "PhoneManager.h"
#include "Resources.h"
#include "Snapshots.h"

#include <platform/appkit/NSApplication.h>
#include <platform/foundation/NSLocale.h>
#include <platform/foundation/NSUserDefaults.h>
#include <util/SystemUtil.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

/// Keeps a language for the user: the one chosen before, or else that of the environment if there are
/// texts in it.
void chooseLanguage()
{
    const Ref<NSString> key = text("Tavori");
    const Ref<NSUserDefaults> defaults = NSUserDefaults::standardUserDefaults();
    if (!defaults->objectForKey(key.get())) {
        const bool german = NSLocale::currentLocale()->localeIdentifier()->UTF8String().starts_with("de");
        defaults->setObject_forKey(text(german ? "de" : "en").get(), key.get());
    }
}

} // namespace

int main(int argc, char** argv)
{
    SystemUtil::GenerateTaskStartSecond();
    std::vector<std::string> arguments(argv + 1, argv + argc);
    if (isHeadless(arguments)) {
        chooseLanguage();
        return runHeadless(arguments);
    }
    const bool isSnapshot = !arguments.empty() && arguments[0] == "--snapshot";
    const bool hasSettings = !arguments.empty() && arguments[0] == "--settings";
    const bool isWrong = !arguments.empty() && arguments[0].starts_with("--") &&
                         ((!isSnapshot && !hasSettings) || arguments.size() < 2);
    if (isWrong) {
        std::fprintf(stderr,
                     "usage: phone_manager [--settings FILE] [FILE...]\n"
                     "       %s\n"
                     "       phone_manager --snapshot DIR [FILE...]\n",
                     kHeadlessUsage);
        return 2;
    }
    const auto firstFile = arguments.begin() + (isSnapshot || hasSettings ? 2 : 0);
    const std::vector<std::filesystem::path> files(firstFile, arguments.end());
    if (isSnapshot) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    if (isSnapshot) {
        return writeSnapshots(arguments[1], files) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (application->isOffscreen()) {
        std::fprintf(stderr, "There is no display to open a window on. Use --snapshot or --import.\n");
        return EXIT_FAILURE;
    }
    chooseLanguage();
    const Ref<PhoneManager> manager = make<PhoneManager>(hasSettings ? arguments[1] : Settings::userFile());
    manager->openWindow();
    if (!files.empty()) {
        manager->importFiles(files);
    }
    return application->run();
}
