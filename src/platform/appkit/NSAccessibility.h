#pragma once

/// What kind of thing a view is to assistive technology.
enum class NSAccessibilityRole {
    Unknown,
    Group,
    Button,
    CheckBox,
    ProgressIndicator,
    StaticText,
};
