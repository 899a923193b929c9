#pragma once

#include <platform/foundation/NSObject.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Work in slices, one with each turn of the event loop, so that the user can go on working and cancel. A
/// task is used once, on the user-interface thread, and while it runs the loop keeps it alive: one that
/// nobody is interested in any more has to be cancelled.
class Task : public NSObject
{
public:
    enum class State { Idle, Running, Done, Cancelled };
    /// That many faults are kept, the rest is counted.
    static constexpr std::size_t kMostFaults = 100;

    Task();

    /// Is called after each slice, and when the task is cancelled. Default nothing.
    void setObserver(std::function<void()> observer) { _observer = std::move(observer); }

    void start();
    /// Ends a task that is running. What it has done stays.
    void cancel();
    State state() const { return _state; }
    /// Tells tasks apart, since the program began.
    std::int64_t identifier() const { return _identifier; }
    /// From 0 to 1.
    virtual double progress() const = 0;

    /// What went wrong, in sentences in the user's language. All else was done.
    const std::vector<std::string>& faults() const { return _faults; }
    std::size_t faultCount() const { return _faultCount; }
    /// What was done so far, in one sentence.
    virtual std::string summary() const = 0;

    /// Sent by the event loop.
    void proceed();

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    /// Called before the first slice.
    virtual void begin() = 0;
    /// Does a slice and returns whether there is more to do. What takes long ends it: some hundred
    /// kilobytes, or a picture.
    virtual bool work() = 0;
    /// Called when the task is done or cancelled.
    virtual void end() = 0;

    void addFault(std::string sentence);

private:
    void report() const;

    State _state = State::Idle;
    std::int64_t _identifier;
    std::vector<std::string> _faults;
    std::size_t _faultCount = 0;
    std::function<void()> _observer;
};
