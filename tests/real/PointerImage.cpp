// Apart from the rest of the desktop, since this header's macros have names that Qt's classes use.
#include "real/PointerImage.h"

#include <X11/extensions/Xfixes.h>

#include <cstddef>

std::vector<unsigned long> desktop::pointerImage()
{
    Display* const display = XOpenDisplay(nullptr);
    int event = 0;
    int error = 0;
    XFixesQueryExtension(display, &event, &error);
    XFixesCursorImage* const image = XFixesGetCursorImage(display);
    std::vector<unsigned long> pixels{image->width};
    pixels.insert(pixels.end(), image->pixels,
                  image->pixels + static_cast<std::size_t>(image->width) * image->height);
    XFree(image);
    XCloseDisplay(display);
    return pixels;
}
