#include "TaskPanel.h"

#include "Task.h"
#include "Texts.h"

#include <platform/foundation/ClassTable.h>

#include <algorithm>
#include <array>

namespace
{

constexpr std::size_t kMostFaults = 3; // that show

constexpr std::array kProperties{
    property<&TaskPanel::status, &TaskPanel::setStatus>("status"),
    property<&TaskPanel::progress, &TaskPanel::setProgress>("progress"),
    property<&TaskPanel::cancelButton, &TaskPanel::setCancelButton>("cancelButton"),
};

} // namespace

constinit const ClassTable TaskPanel::table{
    "TaskPanel", &ZuBox::table, kProperties, {}, makeObject<TaskPanel>};

const ClassTable& TaskPanel::classTable() const
{
    return table;
}

TaskPanel::TaskPanel() = default;

TaskPanel::~TaskPanel() = default;

void TaskPanel::show(const Task& task)
{
    const std::size_t shown = std::min(task.faults().size(), kMostFaults);
    std::string status = localised("Task %s: %s", {std::to_string(task.identifier()), task.summary()});
    for (std::size_t fault = 0; fault < shown; ++fault) {
        status += '\n' + task.faults()[fault];
    }
    if (task.faultCount() > shown) {
        status += '\n' + localised("… and %s more", {std::to_string(task.faultCount() - shown)});
    }
    setHidden(false);
    _status->setStringValue(text(status));
    const bool isRunning = task.state() == Task::State::Running;
    _progress->setTotal_(1.0);
    _progress->setStep_(task.progress());
    _progress->setHidden(!isRunning);
    _cancelButton->setHidden(!isRunning);
    _progress->setNeedsDisplay();
}

void TaskPanel::show(const std::string& sentence)
{
    setHidden(sentence.empty());
    _status->setStringValue(text(sentence));
    _progress->setHidden(true);
    _cancelButton->setHidden(true);
}
