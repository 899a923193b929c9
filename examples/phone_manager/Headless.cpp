#include "Headless.h"

#include "Phone.h"
#include "Resources.h"
#include "files/ExportTask.h"
#include "files/ImportTask.h"
#include "files/TextFile.h"

#include <platform/appkit/NSApplication.h>

#include <cstdio>
#include <cstdlib>

namespace
{

constexpr int kSomethingFailed = 1;

/// Does the whole task and reports on it. Returns whether nothing went wrong.
bool perform(Task& task, NSApplication& application)
{
    task.start();
    while (task.state() == Task::State::Running) {
        application.handlePendingEvents();
    }
    for (const std::string& fault : task.faults()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
    }
    if (task.faultCount() > task.faults().size()) {
        const std::size_t more = task.faultCount() - task.faults().size();
        std::fprintf(stderr, "%s\n", localised("… and %s more", {std::to_string(more)}).c_str());
    }
    std::printf("%s\n", task.summary().c_str());
    return task.faultCount() == 0;
}

} // namespace

int runHeadless(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                const std::string& charset)
{
    if (!TextFile::knowsCharset(charset)) {
        std::fprintf(stderr, "%s\n", localised("The character set “%s” is not known.", {charset}).c_str());
        return kWrongArguments;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 1); // a display that there is may be one that cannot be opened
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<Phone> phone = make<Phone>();
    const Ref<ImportTask> import = make<ImportTask>()->initWithFiles_phone(files, phone);
    import->setCharset(charset);
    const bool isImported = perform(*import, *application);
    phone->checkAll();
    const Ref<ExportTask> exported = make<ExportTask>()->initWithPhone_folder(phone, folder);
    return perform(*exported, *application) && isImported ? EXIT_SUCCESS : kSomethingFailed;
}
