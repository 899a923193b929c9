#pragma once

#include <platform/foundation/NSObject.h>
#include <platform/foundation/Weak.h>

#include <cstddef>
#include <cstdint>
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

    void start();
    /// Ends a task that is running. What it has done stays.
    void cancel();
    State state() const { return _state; }
    /// Tells tasks apart, since the program began.
    std::int64_t identifier() const { return _identifier; }
    /// From 0 to 1.
    virtual double progress() const = 0;

    /// Sends `action` to `target` (not retained), with this object, after each slice and when it is
    /// cancelled. Default none.
    void setTarget_action(NSObject* target, SEL action);

    /// What went wrong, in sentences in the user's language. All else was done.
    const std::vector<std::string>& faults() const { return _faults; }
    std::size_t faultCount() const { return _faultCount; }
    /// What was done so far, in one sentence.
    virtual std::string summary() const = 0;

    /// Sent by the event loop.
    void proceed();

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~Task() override;

    /// Called before the first slice.
    virtual void begin() = 0;
    /// Does a slice and returns whether there is more to do. What takes long ends it: some hundred
    /// kilobytes, or a picture.
    virtual bool work() = 0;
    /// Called when the task is done or cancelled.
    virtual void end() = 0;

    void addFault(std::string sentence);

private:
    void report();

    State _state = State::Idle;
    std::int64_t _identifier;
    std::vector<std::string> _faults;
    std::size_t _faultCount = 0;
    Weak<NSObject> _target;
    SEL _action;
};
