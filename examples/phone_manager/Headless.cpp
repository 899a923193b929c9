#include "Headless.h"

#include "Phone.h"
#include "Resources.h"
#include "files/ExportTask.h"
#include "files/ImportTask.h"

#include <cstdio>
#include <cstdlib>

/// Does the whole task and reports on it. Returns whether nothing went wrong.
static bool perform(Task& task)
{
    task.run();
    for (const std::string& fault : task.faults()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
    }
    if (const std::size_t more = task.faultCount() - task.faults().size(); more > 0) {
        std::fprintf(stderr, "%s\n", localised("… and %s more", {std::to_string(more)}).c_str());
    }
    std::printf("%s\n", task.summary().c_str());
    return std::fflush(stdout) == 0 && task.faultCount() == 0;
}

int runHeadless(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                const std::string& charset)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1); // a display that there is may be one that cannot be opened
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<Phone> phone = make<Phone>();
    const bool isImported = perform(*make<ImportTask>(files, phone, charset));
    phone->visit([](Kind, const std::string&, bool& isChecked) { isChecked = true; });
    return perform(*make<ExportTask>(*phone, folder)) && isImported ? EXIT_SUCCESS : EXIT_FAILURE;
}
