#include "window/ZuSmsRow.h"

#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <string>

namespace
{

constexpr std::int32_t kSendingFailed = 5;

constexpr double kRoomAroundTallPicture = 2.0; // above and below together
constexpr float kGap = 4.0F;                   // from picture to title

constexpr NSPoint kMarkOffset{250.0, -3.0}; // from the title
constexpr double kMarkSize = 13.0;
constexpr double kContentsSize = 12.0;
constexpr double kRoomBesideContents = 46.0; // which are narrower than the title by that

Ref<NSString> mark()
{
    return NSString::stringWithCharacters(u"Failed");
}

} // namespace

ZuSmsRow::ZuSmsRow(Ref<NSImage> picture, bool isTitleCentered, std::int32_t sentSmsType,
                   Ref<NSString> contents, WithoutPicture withoutPicture)
    : _picture(std::move(picture)), _isTitleCentered(isTitleCentered), _sentSmsType(sentSmsType),
      _contents(std::move(contents)), _withoutPicture(withoutPicture)
{
}

ZuSmsRow::~ZuSmsRow() = default;

bool ZuSmsRow::isFailed() const
{
    return _sentSmsType == kSendingFailed;
}

NSRect ZuSmsRow::drawPicture(NSRect frame, NSSize titleSize) const
{
    const auto [left, top] = frame.origin;
    const bool titleInItsPlace = !_picture && _withoutPicture == WithoutPicture::Nothing;
    NSSize size = titleInItsPlace ? titleSize : _picture ? _picture->size() : NSSize{};
    if (size.height > frame.size.height) { // a square then, whatever the picture's proportions
        size.height = frame.size.height - kRoomAroundTallPicture;
        size.width = size.height;
    }
    const NSRect place{{left, top + (frame.size.height - size.height) * 0.5}, size};
    if (_picture) {
        _picture->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
            place, NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);
    }
    // In single precision, which rounds places far to the right.
    const float beside = static_cast<float>(left) + static_cast<float>(size.width) + kGap;
    const double x = titleInItsPlace ? left : static_cast<double>(beside);
    const double y = _isTitleCentered ? top + (frame.size.height - titleSize.height) * 0.5 : place.origin.y;
    return NSMakeRect(x, y, left + frame.size.width - x, titleSize.height);
}

void ZuSmsRow::drawTexts(NSRect frame, NSRect title) const
{
    if (isFailed()) {
        mark()->drawInRect_withAttributes(
            {{title.origin.x + kMarkOffset.x, title.origin.y + kMarkOffset.y}, title.size},
            {{NSFontAttributeName, NSFont::fontWithName_size("Arial", kMarkSize)},
             {NSForegroundColorAttributeName, NSColor::redColor()}});
    }
    if (_contents && _contents->length() > 0) {
        const double below = title.origin.y + title.size.height;
        const double bottom = frame.origin.y + frame.size.height;
        _contents->drawInRect_withAttributes(
            NSMakeRect(title.origin.x, below, title.size.width - kRoomBesideContents, bottom - below),
            {{NSFontAttributeName, NSFont::fontWithName_size("Arial", kContentsSize)},
             {NSForegroundColorAttributeName, NSColor::grayColor()}});
    }
}

Ref<NSString> ZuSmsRow::label(const NSString& title) const
{
    std::u16string words(title.characters());
    const auto add = [&](const NSString& more) {
        words.append(words.empty() ? u"" : u", ").append(more.characters());
    };
    if (isFailed()) {
        add(*mark());
    }
    if (_contents && _contents->length() > 0) {
        add(*_contents);
    }
    return NSString::stringWithCharacters(words);
}
