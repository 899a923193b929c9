#pragma once

#include <Tessaline.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Work in steps and slices of steps, one with each turn of the event loop, so that the user can go on
/// working and cancel. A task is used once, on the user-interface thread, and while it runs the loop keeps it
/// alive: one that nobody is interested in any more has to be cancelled.
class Task : public NSObject
{
public:
    enum class State { Waiting, Running, Done, Cancelled };

    Task() : _identifier(SystemUtil::getTaskId()) {}

    /// Is called after each slice, and when the task is cancelled.
    std::function<void()> didProceed = [] {};

    void start();
    /// Starts it if it was not, and returns when it has ended.
    void run();
    /// Ends a task that is running. What it has done stays, unless it takes that back.
    void cancel();
    State state() const { return _state; }
    /// Tells tasks apart, since the program began.
    std::int64_t identifier() const { return _identifier; }
    /// From 0 to 1.
    double progress() const;

    // In the user's language: what was done so far, and what went wrong, each in a sentence. All else was
    // done.
    virtual std::string summary() const = 0;
    const std::vector<std::string>& faults() const { return _faults; }
    /// How many there were; no more than `kMostFaults` are kept.
    std::size_t faultCount() const { return _faultCount; }
    static constexpr std::size_t kMostFaults = 1000;

    /// Sent by the event loop.
    void proceed();

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    /// Does a slice and returns how much of the step is done then, up to 1.
    using Step = std::function<double()>;
    static constexpr std::size_t kRecordsInSlice = 500;

    /// The weight is about how long it takes, in whatever unit.
    void addStep(Step step, double weight = 1.0);
    /// Called in a step: none follows.
    void finish() { _state = State::Done; }
    void addFault(std::string sentence);
    virtual void didCancel() {}

private:
    State _state = State::Waiting;
    std::int64_t _identifier;
    std::vector<std::pair<Step, double>> _steps; // with their weights
    std::size_t _stepsDone = 0;
    double _partDone = 0.0; // of the next one
    double _weightDone = 0.0;
    double _weight = 0.0;
    std::vector<std::string> _faults;
    std::size_t _faultCount = 0;
};
