#include "files/Task.h"

#include <array>
#include <utility>

constexpr SEL kProceed{"proceed"};
constexpr std::array kSelectors{selector<&Task::proceed>(kProceed.name)};

constinit const ClassTable Task::table{"Task", &NSObject::table, {}, kSelectors};

void Task::addStep(Step step, double weight)
{
    _steps.emplace_back(std::move(step), weight);
    _weight += weight;
}

void Task::addFault(std::string sentence)
{
    if (_faultCount++ < kMostFaults) {
        _faults.push_back(std::move(sentence));
    }
}

double Task::progress() const
{
    const double part = _stepsDone < _steps.size() ? _partDone * _steps[_stepsDone].second : 0.0;
    return _state == State::Done ? 1.0 : _weight > 0.0 ? (_weightDone + part) / _weight : 0.0;
}

void Task::start()
{
    _state = State::Running;
    performSelector_withObject_afterDelay(kProceed, nullptr, 0.0);
}

void Task::run()
{
    const Ref<Task> self(this); // which whoever is told may let go
    if (_state == State::Waiting) {
        start();
    }
    while (_state == State::Running) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
}

void Task::proceed()
{
    const Ref<Task> self(this); // which whoever is told may let go
    if (_state != State::Running) {
        return; // cancelled since this was asked for
    }
    if (_stepsDone < _steps.size()) {
        const auto& [step, weight] = _steps[_stepsDone];
        _partDone = step();
        if (_partDone >= 1.0) {
            ++_stepsDone;
            _weightDone += weight;
            _partDone = 0.0;
        }
    }
    if (_stepsDone == _steps.size()) {
        finish();
    }
    didProceed();
    if (_state == State::Running) {
        performSelector_withObject_afterDelay(kProceed, nullptr, 0.0);
    }
}

void Task::cancel()
{
    const Ref<Task> self(this);
    if (_state == State::Running) {
        _state = State::Cancelled;
        didCancel();
        didProceed();
    }
}
