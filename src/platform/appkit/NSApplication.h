#pragma once

#include "platform/foundation/NSObject.h"

#include <memory>

class QApplication;

/// The running program and its event loop. Exists as long as a reference to it does: `main` holds one
/// from before the first font, image or view is made until after the last is gone. What the toolkit itself
/// says, as in panels, is in the language of the system where its translation is installed.
class TESSALINE_EXPORT NSApplication final : public NSObject
{
public:
    /// The one application object. If the host is a Qt application already, it stands for that one.
    static Ref<NSApplication> sharedApplication();

    /// Whether nothing can be seen, since there is no display: views then draw off screen only.
    bool isOffscreen() const;

    /// Handles events until the last window is closed. Returns the exit code.
    int run();

    /// Handles the events that are waiting, if any, and returns.
    void handlePendingEvents();

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    NSApplication();
    ~NSApplication() override;

    std::unique_ptr<QApplication> _application; // null in a host that has its own
};
