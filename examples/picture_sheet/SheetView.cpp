#include "SheetView.h"

#include "Scenes.h"

#include <platform/foundation/NSString.h>
#include <platform/graphics/NSBezierPath.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSParagraphStyle.h>
#include <util/UiUtil.h>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double kWidest = 480.0; // of a sheet
constexpr double kMargin = 12.0;
constexpr double kGap = 16.0;
constexpr double kCaptionGap = 6.0;
constexpr double kCaptionHeight = 16.0;
constexpr double kCaptionSize = 11.0;
constexpr double kLeastWidth = 112.0; // for the caption

Ref<NSColor> grey(double white)
{
    return NSColor::colorWithCalibratedWhite_alpha(white, 1.0);
}

} // namespace

SheetView* SheetView::initWithLooks(const std::vector<Look>& looks)
{
    NSSize cell{kLeastWidth, 0.0};
    for (const Look& look : looks) {
        const NSSize size = look.view->bounds().size;
        cell = {std::max(cell.width, size.width), std::max(cell.height, size.height)};
    }
    const auto columns = static_cast<std::size_t>((kWidest - 2.0 * kMargin + kGap) / (cell.width + kGap));
    NSSize sheet;
    for (std::size_t i = 0; i < looks.size(); ++i) {
        const std::size_t row = i / columns;
        const double x = kMargin + static_cast<double>(i - row * columns) * (cell.width + kGap);
        const double y =
            kMargin + static_cast<double>(row) * (cell.height + kCaptionGap + kCaptionHeight + kGap);
        const NSSize size = looks[i].view->bounds().size;
        // Where the cell is wider or higher, in its middle; on whole points.
        looks[i].view->setFrame({{x + std::floor((cell.width - size.width) * 0.5),
                                  y + std::floor((cell.height - size.height) * 0.5)},
                                 size});
        addSubview(looks[i].view);
        const NSRect caption = NSMakeRect(x, y + cell.height + kCaptionGap, cell.width, kCaptionHeight);
        _captions.push_back({looks[i].name, caption});
        sheet = {std::max(sheet.width, x + cell.width + kMargin),
                 std::max(sheet.height, y + cell.height + kCaptionGap + kCaptionHeight + kMargin)};
    }
    initWithFrame({{}, sheet});
    return this;
}

void SheetView::drawRect(NSRect /*rect*/)
{
    grey(0.9)->setFill();
    NSBezierPath::fillRect(bounds());
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", kCaptionSize);
    for (const Caption& caption : _captions) {
        UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(
            NSString::stringWithUTF8String(caption.text).get(), font.get(), caption.rect, grey(0.35).get(),
            NSTextAlignment::Center);
    }
}
