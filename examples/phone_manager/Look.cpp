#include "Look.h"

#include "Texts.h"

#include <platform/foundation/NSBundle.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSImage.h>

Ref<NSColor> grey(double white)
{
    return NSColor::colorWithCalibratedWhite_alpha(white, 1.0);
}

Ref<NSImage> icon(const std::string& name)
{
    const Ref<NSBundle> bundle = NSBundle::mainBundle();
    const Ref<NSString> png = text("png");
    const Ref<NSString> path = bundle->pathForResource_ofType(text(name).get(), png.get());
    const Ref<NSString> sharp = bundle->pathForResource_ofType(text(name + "@2x").get(), png.get());
    Ref<NSImage> image = path ? make<NSImage>()->initByReferencingFile(path.get())
                              : make<NSImage>()->initWithContentsOfFile(sharp.get());
    if (image) {
        image->setName(name);
    }
    return image;
}
