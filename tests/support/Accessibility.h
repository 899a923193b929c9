#pragma once

#include <string>

class NSView;
class QAccessibleInterface;

/// What assistive technology asks about a view.
QAccessibleInterface& accessible(NSView& view);

/// What is said of a view, in words: its role, name, description, what can be done, whether it is checked if
/// it can be, disabled, and takes the keyboard; then, if it measures something, the least, the present and
/// the greatest value.
std::string said(QAccessibleInterface& view);
