// Manages what is on a phone: contacts, messages and pictures from files, to look at, check and export.

#include "Headless.h"
#include "PhoneManager.h"
#include "Resources.h"
#include "Snapshots.h"

#include <platform/appkit/NSApplication.h>
#include <util/SystemUtil.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace
{

constexpr const char* kUsage =
    "usage: phone_manager [FILE...]                   opens the window, and imports the files\n"
    "       phone_manager --settings FILE [FILE...]   on settings of its own\n"
    "       phone_manager --import FILE... --export DIR [--charset NAME]\n"
    "                                                 does that without a window\n"
    "       phone_manager --snapshot DIR [FILE...]    writes pictures of all pages instead\n";

/// What follows each option, and under "" what follows none.
using Options = std::map<std::string, std::vector<std::string>>;

Options optionsIn(const std::vector<std::string>& arguments)
{
    Options options;
    std::string option;
    for (const std::string& argument : arguments) {
        if (argument.starts_with("--")) {
            option = argument;
            options[option]; // it may have nothing
        } else {
            options[option].push_back(argument);
        }
    }
    return options;
}

/// Whether they are those of one line of the usage.
bool areRight(const Options& options)
{
    const auto has = [&](const char* option, std::size_t most = SIZE_MAX) {
        const auto found = options.find(option);
        return found != options.end() && !found->second.empty() && found->second.size() <= most;
    };
    const std::size_t headless = has("--charset", 1) ? 3 : 2;
    return options.empty() || (options.size() == 1 && (has("") || has("--settings") || has("--snapshot"))) ||
           (options.size() == headless && has("--import") && has("--export", 1));
}

} // namespace

int main(int argc, char** argv)
{
    SystemUtil::GenerateTaskStartSecond();
    Options options = optionsIn({argv + 1, argv + argc});
    if (!areRight(options)) {
        std::fputs(kUsage, stderr);
        return kWrongArguments;
    }
    useLanguageOfEnvironment();
    if (options.contains("--import")) {
        const std::vector<std::string>& files = options["--import"];
        return runHeadless({files.begin(), files.end()}, options["--export"].front(),
                           options.contains("--charset") ? options["--charset"].front() : "UTF-8");
    }
    const bool isSnapshot = options.contains("--snapshot");
    const bool hasSettings = options.contains("--settings");
    const std::vector<std::string> values =
        options.empty() ? std::vector<std::string>() : options.begin()->second;
    const std::vector<std::filesystem::path> files(values.begin() + (isSnapshot || hasSettings ? 1 : 0),
                                                   values.end());
    if (isSnapshot) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    if (isSnapshot) {
        return writeSnapshots(values.front(), files) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (application->isOffscreen()) {
        std::fprintf(stderr, "There is no display to open a window on. Use --snapshot or --import.\n");
        return EXIT_FAILURE;
    }
    const Ref<PhoneManager> manager = make<PhoneManager>(hasSettings ? values.front() : Settings::userFile());
    manager->openWindow();
    if (!files.empty()) {
        manager->importFiles(files);
    }
    return application->run();
}
