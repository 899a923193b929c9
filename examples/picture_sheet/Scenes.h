#pragma once

#include <platform/foundation/Ref.h>

#include <string_view>
#include <vector>

class NSView;

/// A control as it can look: set up, ready to be drawn.
struct Look {
    const char* name;
    Ref<NSView> view;
};

/// A control with all its looks.
struct Scene {
    const char* control;
    std::vector<Look> looks;
};

/// The controls of the library, new ones with each call.
std::vector<Scene> scenes();

/// One of their looks; null if there is none of that name.
Ref<NSView> look(std::string_view control, std::string_view name);
