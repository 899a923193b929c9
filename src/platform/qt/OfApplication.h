#pragma once

// What is kept as long as the application. Private to the platform layer.

#include <QCoreApplication>

#include <utility>

/// The one `T` of the application: made when it is first asked for, gone with the application, since what it
/// holds must not outlive Qt's own; another application gets another.
template <class T> T& ofApplication()
{
    static T* object = nullptr;
    if (object == nullptr) {
        object = new T;
        qAddPostRoutine([] { delete std::exchange(object, nullptr); });
    }
    return *object;
}
