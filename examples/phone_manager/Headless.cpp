#include "Headless.h"

#include "ExportTask.h"
#include "ImportTask.h"
#include "Phone.h"
#include "Resources.h"
#include "TextFile.h"

#include <platform/appkit/NSApplication.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>

namespace
{

constexpr const char* kImport = "--import";
constexpr const char* kExport = "--export";
constexpr const char* kCharset = "--charset";
constexpr int kSomethingFailed = 1;
constexpr int kWrongArguments = 2;

/// What was given for each option.
using Values = std::map<std::string, std::vector<std::string>>;

/// Empty if the arguments are wrong.
Values valuesIn(const std::vector<std::string>& arguments)
{
    Values values;
    std::string option;
    for (const std::string& argument : arguments) {
        if (argument.starts_with("--")) {
            option = argument;
            values[option]; // it may have none
        } else {
            values[option].push_back(argument); // of no option, if it is the first
        }
    }
    const bool isRight = std::ranges::all_of(values, [](const auto& each) {
        const auto& [name, given] = each;
        return (name == kImport && !given.empty()) ||
               ((name == kExport || name == kCharset) && given.size() == 1);
    });
    return isRight && values.contains(kImport) && values.contains(kExport) ? values : Values();
}

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
        std::fprintf(stderr, "%s\n", localised("And %s more.", {std::to_string(more)}).c_str());
    }
    std::printf("%s\n", task.summary().c_str());
    return task.faultCount() == 0;
}

} // namespace

bool isHeadless(const std::vector<std::string>& arguments)
{
    return std::ranges::any_of(arguments, [](const std::string& argument) {
        return argument == kImport || argument == kExport || argument == kCharset;
    });
}

int runHeadless(const std::vector<std::string>& arguments)
{
    const Values values = valuesIn(arguments);
    if (values.empty()) {
        std::fprintf(stderr, "usage: %s\n", kHeadlessUsage);
        return kWrongArguments;
    }
    const std::string charset = values.contains(kCharset) ? values.at(kCharset).front() : "UTF-8";
    if (!TextFile::knowsCharset(charset)) {
        std::fprintf(stderr, "%s\n", localised("The character set “%s” is not known.", {charset}).c_str());
        return kWrongArguments;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 1); // a display that there is may be one that cannot be opened
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<Phone> phone = make<Phone>();
    const std::vector<std::string>& files = values.at(kImport);
    const Ref<ImportTask> import =
        make<ImportTask>()->initWithFiles_phone({files.begin(), files.end()}, phone);
    import->setCharset(charset);
    const bool isImported = perform(*import, *application);
    phone->checkAll();
    const Ref<ExportTask> exported =
        make<ExportTask>()->initWithPhone_folder(phone, values.at(kExport).front());
    return perform(*exported, *application) && isImported ? EXIT_SUCCESS : kSomethingFailed;
}
