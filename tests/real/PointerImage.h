#pragma once

#include <vector>

namespace desktop
{

/// The picture that the pointer has at the moment: its pixels row by row, before them its width.
std::vector<unsigned long> pointerImage();

} // namespace desktop
