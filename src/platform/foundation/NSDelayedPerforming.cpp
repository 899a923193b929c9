// The part of NSObject that needs an event loop.

#include "platform/foundation/NSObject.h"

#include "platform/foundation/Diagnostics.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>

void NSObject::performSelector_withObject_afterDelay(SEL selector, NSObject* argument, double seconds)
{
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) {
        diagnose("performSelector",
                 "there is no application whose event loop could send \"" + std::string(selector.name) + '"');
        return;
    }
    constexpr double kMilliseconds = 1000.0;
    constexpr double kLongest = std::numeric_limits<int>::max();
    const double delay = seconds > 0.0 ? std::min(std::ceil(seconds * kMilliseconds), kLongest) : 0.0;
    auto* timer = new QTimer(application); // belongs to it, and goes with it if its time does not come
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
