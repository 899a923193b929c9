#include "files/Task.h"

#include <platform/foundation/ClassTable.h>
#include <util/SystemUtil.h>

#include <array>
#include <utility>

namespace
{

constexpr SEL kProceed{"proceed"};
constexpr std::array kSelectors{selector<&Task::proceed>(kProceed.name)};

} // namespace

constinit const ClassTable Task::table{"Task", &NSObject::table, {}, kSelectors};

Task::Task() : _identifier(SystemUtil::getTaskId()) {}

void Task::start()
{
    if (_state == State::Idle) {
        _state = State::Running;
        begin();
        performSelector_withObject_afterDelay(kProceed, nullptr, 0.0);
    }
}

void Task::proceed()
{
    const Ref<Task> self(this); // which whoever is told may let go
    if (_state != State::Running) {
        return; // cancelled since this was asked for
    }
    if (!work()) {
        _state = State::Done;
        end();
    }
    report();
    if (_state == State::Running) {
        performSelector_withObject_afterDelay(kProceed, nullptr, 0.0);
    }
}

void Task::cancel()
{
    const Ref<Task> self(this);
    if (_state == State::Running) {
        _state = State::Cancelled;
        end();
        report();
    }
}

void Task::addFault(std::string sentence)
{
    ++_faultCount;
    if (_faults.size() < kMostFaults) {
        _faults.push_back(std::move(sentence));
    }
}

void Task::report() const
{
    if (_observer) {
        _observer();
    }
}
