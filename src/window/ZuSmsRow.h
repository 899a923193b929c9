#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/Ref.h"

#include <cstdint>

class NSImage;
class NSString;

/// What the cells of message rows have in common: where picture, title and the other texts of a row are. Made
/// by a cell for one call; the title itself is the base class's to draw.
class ZuSmsRow
{
public:
    /// What the title has left of it in a row without a picture.
    enum class WithoutPicture {
        /// The gap that would be between the two.
        Gap,
        /// Nothing: it stands where a picture of its size would.
        Nothing,
    };

    /// Picture and contents may be null.
    ZuSmsRow(Ref<NSImage> picture, bool isTitleCentered, std::int32_t sentSmsType, Ref<NSString> contents,
             WithoutPicture withoutPicture);
    ~ZuSmsRow();

    /// Draws the picture, if there is one, where the row is in `frame`, and answers the place of a title of
    /// that size beside it.
    NSRect drawPicture(NSRect frame, NSSize titleSize) const;
    /// Draws the mark of a message that could not be sent, and the contents, each if there is one.
    void drawTexts(NSRect frame, NSRect title) const;

    /// The title and what else the row tells, in that order.
    Ref<NSString> label(const NSString& title) const;

private:
    bool isFailed() const;

    Ref<NSImage> _picture;
    bool _isTitleCentered;
    std::int32_t _sentSmsType;
    Ref<NSString> _contents;
    WithoutPicture _withoutPicture;
};
