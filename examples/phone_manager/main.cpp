// Manages what is on a phone: contacts, messages and pictures from files, to look at, check and export.

#include "Headless.h"
#include "PhoneManager.h"
#include "Resources.h"
#include "Snapshots.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>

constexpr const char* kUsage =
    "usage: phone_manager [FILE...]                   opens the window, and imports the files\n"
    "       phone_manager --import FILE... --export DIR [--charset NAME]\n"
    "                                                 does that without a window\n"
    "       phone_manager --snapshot DIR [FILE...]    writes pictures of all pages instead\n";

int main(int argc, char** argv)
{
    SystemUtil::GenerateTaskStartSecond();
    std::map<std::string, std::vector<std::filesystem::path>> options; // under "" what follows none
    std::string option;
    for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
        if (argument.starts_with("--")) {
            option = argument;
            options[option]; // it may have nothing
        } else {
            options[option].emplace_back(argument);
        }
    }
    const auto has = [&](const char* name, std::size_t most = SIZE_MAX) {
        const auto found = options.find(name);
        return found != options.end() && !found->second.empty() && found->second.size() <= most;
    };
    const bool isSnapshot = options.size() == 1 && has("--snapshot");
    const bool isHeadless =
        options.size() == (has("--charset", 1) ? 3 : 2) && has("--import") && has("--export", 1);
    if (!options.empty() && !isSnapshot && !isHeadless && !(options.size() == 1 && has(""))) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    useLanguageOfEnvironment();
    if (isHeadless) {
        return runHeadless(options["--import"], options["--export"].front(),
                           has("--charset") ? options["--charset"].front().string() : "UTF-8");
    }
    if (isSnapshot) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    if (isSnapshot) {
        const auto& folder = options["--snapshot"];
        return writeSnapshots(folder.front(), {folder.begin() + 1, folder.end()}) ? EXIT_SUCCESS
                                                                                  : EXIT_FAILURE;
    }
    if (application->isOffscreen()) {
        std::fprintf(stderr, "There is no display to open a window on. Use --snapshot or --import.\n");
        return EXIT_FAILURE;
    }
    const Ref<PhoneManager> manager = make<PhoneManager>(Settings::userFile());
    manager->openWindow();
    if (has("")) {
        manager->importFiles(options[""]);
    }
    return application->run();
}
