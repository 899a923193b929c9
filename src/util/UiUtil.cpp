#include "util/UiUtil.h"

#include "platform/appkit/CALayer.h"
#include "platform/appkit/NSButton.h"
#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSLayoutManager.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"
#include "util/StringUtil.h"

#include <array>
#include <limits>

namespace
{

constexpr double kUnlimitedHeight = std::numeric_limits<float>::max();
constexpr double kMeasuringPadding = 0.0;

/// A text laid out in one container.
struct TextSystem {
    TextSystem(NSString* text, NSFont* font, double width)
        : storage(make<NSTextStorage>()->initWithString(text)),
          container(make<NSTextContainer>()->initWithContainerSize({width, kUnlimitedHeight})),
          layoutManager(make<NSLayoutManager>())
    {
        layoutManager->addTextContainer(container);
        storage->addLayoutManager(layoutManager);
        storage->addAttribute_value_range(NSFontAttributeName, Ref(font), all());
    }

    NSRange all() const { return {0, storage->length()}; }

    Ref<NSTextStorage> storage;
    Ref<NSTextContainer> container;
    Ref<NSLayoutManager> layoutManager;
};

Ref<NSColor> colorOf(int red, int green, int blue)
{
    constexpr double kFull = 255.0;
    return NSColor::colorWithSRGBRed_green_blue_alpha(red / kFull, green / kFull, blue / kFull, 1.0);
}

std::array<int, 3> componentsOf(NSString* digits)
{
    const Ref<NSArray<NSNumber>> numbers = StringUtil::GetHexRGB(digits);
    const auto component = [&](std::size_t index) {
        return static_cast<int>(numbers->objectAtIndex(index)->integerValue());
    };
    return {component(0), component(1), component(2)};
}

} // namespace

void UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(NSString* text, NSFont* font, NSRect rect,
                                                                    NSColor* color, NSTextAlignment align)
{
    if (text == nullptr) {
        return;
    }
    const TextSystem system(text, font, rect.size.width);
    system.storage->addAttribute_value_range(NSForegroundColorAttributeName, Ref(color), system.all());
    const Ref<NSMutableParagraphStyle> style = make<NSMutableParagraphStyle>();
    style->setAlignment(align);
    system.storage->addAttribute_value_range(NSParagraphStyleAttributeName, Ref<NSParagraphStyle>(style),
                                             system.all());

    const NSRange glyphs = system.layoutManager->glyphRangeForTextContainer(system.container.get());
    system.layoutManager->drawGlyphsForGlyphRange_atPoint(glyphs, rect.origin);
}

float UiUtil::heightForStringDrawing_withFont_withWidth(NSString* text, NSFont* font, float width)
{
    if (text == nullptr) {
        return 0.0F;
    }
    const TextSystem system(text, font, width);
    system.container->setLineFragmentPadding(kMeasuringPadding);
    return static_cast<float>(
        system.layoutManager->usedRectForTextContainer(system.container.get()).size.height);
}

void UiUtil::setButton_red_green_blue(NSButton* button, int red, int green, int blue)
{
    setButton_fontColor(button, colorOf(red, green, blue).get());
}

void UiUtil::setButton_fontColorHex(NSButton* button, NSString* digits)
{
    if (digits == nullptr) {
        return;
    }
    const auto [red, green, blue] = componentsOf(digits);
    setButton_red_green_blue(button, red, green, blue);
}

void UiUtil::setButton_fontColor(NSButton* button, NSColor* color)
{
    const Ref<NSAttributedString> current = button == nullptr ? nullptr : button->attributedTitle();
    if (!current || color == nullptr) {
        return;
    }
    const Ref<NSMutableAttributedString> title =
        make<NSMutableAttributedString>()->initWithAttributedString(current.get());
    title->addAttribute_value_range(NSForegroundColorAttributeName, Ref(color), {0, title->length()});
    button->setAttributedTitle(title);
}

void UiUtil::changeBackgroundColor_red_green_blue(NSView* view, int red, int green, int blue)
{
    changeBackgroundColor_withColor(view, colorOf(red, green, blue).get());
}

void UiUtil::changeBackgroundColor_withColor(NSView* view, NSColor* color)
{
    if (view == nullptr) {
        return;
    }
    view->setWantsLayer(true);
    view->layer()->setBackgroundColor(color);
}

void UiUtil::changeBackgroundColor_withRGB(NSView* view, NSString* digits)
{
    if (digits == nullptr) {
        return;
    }
    const auto [red, green, blue] = componentsOf(digits);
    changeBackgroundColor_red_green_blue(view, red, green, blue);
}
