// The part of NSObject that needs an event loop.

#include "platform/foundation/NSObject.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/qt/OfApplication.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

/// What waits for its time, and goes while there is still an application for what it keeps alive, which may
/// have widgets.
struct PendingMessages {
    QObject parent; // of the timers
};

} // namespace

void NSObject::performSelector_withObject_afterDelay(SEL selector, NSObject* argument, double seconds)
{
    if (QCoreApplication::instance() == nullptr) {
        diagnose("performSelector",
                 "there is no application whose event loop could send \"" + std::string(selector.name) + '"');
        return;
    }
    constexpr double kMilliseconds = 1000.0;
    constexpr double kLongest = std::numeric_limits<int>::max();
    const double delay = seconds > 0.0 ? std::min(std::ceil(seconds * kMilliseconds), kLongest) : 0.0;
    auto* timer = new QTimer(&ofApplication<PendingMessages>().parent);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    QObject::connect(
        timer, &QTimer::timeout, timer,
        [self = Ref(this), selector, kept = Ref(argument)] {
            self->performSelector_withObject(selector, kept.get());
        },
        Qt::SingleShotConnection); // lets go of both at once, not with the timer
    timer->start(static_cast<int>(delay));
}
