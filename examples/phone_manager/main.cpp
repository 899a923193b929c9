// Manages what is on a phone: contacts, messages and pictures from files, to look at, check and export.

#include "Headless.h"
#include "PhoneManager.h"
#include "Resources.h"
#include "Snapshots.h"

#include <platform/appkit/NSApplication.h>
#include <platform/foundation/NSLocale.h>
#include <platform/foundation/NSUserDefaults.h>
#include <util/SystemUtil.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <unistd.h>
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

/// The language that the user has chosen, or else that of the environment if there are texts in it.
Ref<NSObject> language()
{
    const Ref<NSObject> chosen = NSUserDefaults::standardUserDefaults()->objectForKey(text("Tavori").get());
    const bool german = NSLocale::currentLocale()->localeIdentifier()->UTF8String().starts_with("de");
    return chosen ? chosen : text(german ? "de" : "en");
}

void setLanguage(const Ref<NSObject>& language)
{
    NSUserDefaults::standardUserDefaults()->setObject_forKey(language.get(), text("Tavori").get());
}

/// What language the environment of a script has is no choice of the user's, and counts for this run only.
int runAsScript(Options& options)
{
    const Ref<NSObject> spoken = language();
    std::string defaults = P_tmpdir "/phone_manager-XXXXXX";
    const int file = mkstemp(defaults.data());
    NSUserDefaults::setStandardDomain(text(defaults).get());
    setLanguage(spoken);
    const std::vector<std::string>& files = options["--import"];
    const int exitCode = runHeadless({files.begin(), files.end()}, options["--export"].front(),
                                     options.contains("--charset") ? options["--charset"].front() : "UTF-8");
    close(file);
    std::remove(defaults.c_str());
    return exitCode;
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
    if (options.contains("--import")) {
        return runAsScript(options);
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
    setLanguage(language());
    const Ref<PhoneManager> manager = make<PhoneManager>(hasSettings ? values.front() : Settings::userFile());
    manager->openWindow();
    if (!files.empty()) {
        manager->importFiles(files);
    }
    return application->run();
}
