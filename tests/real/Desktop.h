#pragma once

#include <functional>
#include <string>
#include <vector>

class QColor;
class QImage;
class QPoint;
class QRect;

/// The display that a test runs on: its pointer, moved by another process, and what it shows.
namespace desktop
{

/// Runs xdotool with these arguments and returns what it prints.
std::string xdotool(const std::vector<std::string>& arguments);

void movePointer(QPoint place);
void press();
void release();
/// Directs the keyboard to the X window.
void focus(unsigned long window);

QColor colorOnScreen(QPoint place);
QImage pictureOfScreen(QRect rect);

/// Handles events until `condition` holds. False if it does not within a generous time.
bool waitUntil(const std::function<bool()>& condition);

} // namespace desktop
