#pragma once

#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSRange.h"

#include <functional>
#include <vector>

class NSString;

/// A text whose stretches carry attributes. The base class does not change once it is set up.
class TESSALINE_EXPORT NSAttributedString : public NSObject
{
public:
    /// A stretch of equal attributes.
    struct Run {
        NSRange range;
        NSAttributes attributes;
    };

    /// An empty text without attributes.
    NSAttributedString();

    /// Set-up with a text (null counts as empty), which gets the attributes from its start to its end.
    /// They stay with an empty text, too, whose font decides its height.
    NSAttributedString* initWithString(NSString* string);
    NSAttributedString* initWithString_attributes(NSString* string, const NSAttributes& attributes);
    /// Set-up with the text and attributes of another, which may be null.
    NSAttributedString* initWithAttributedString(const NSAttributedString* other);

    Ref<NSString> string() const;
    std::size_t length() const;

    /// The attributes of the unit at `index`, which is less than the length. `effectiveRange`, unless
    /// null, receives the stretch around it over which they are the same. At the end of the text, and of
    /// an empty text, those before it; beyond, none at all, with the range {NSNotFound, 0}.
    const NSAttributes& attributesAtIndex_effectiveRange(std::size_t index, NSRange* effectiveRange) const;

    /// The value of one attribute at `index`, or null. `effectiveRange`, unless null, receives the stretch
    /// around it over which that is the same, whatever the others are, as far as it is in `limit`. Behind the
    /// end of the text null, with the range {NSNotFound, 0}.
    template <class T>
    T* attribute_atIndex_longestEffectiveRange_inRange(NSAttributeKey<T> key, std::size_t index,
                                                       NSRange* effectiveRange, NSRange limit) const
    {
        return static_cast<T*>(attributeAt(key.index, index, effectiveRange, limit));
    }

    /// Calls `block` with the stretches in `range`, which is within the text, one after the other, until it
    /// sets its last argument. It may change the text, of which it does not see that.
    void enumerateAttributesInRange_usingBlock(
        NSRange range,
        const std::function<void(const NSAttributes& attributes, NSRange range, bool& stop)>& block) const;

    /// The text's stretches, one after the other; neighbours differ. An empty text has one empty run.
    const std::vector<Run>& runs() const { return _runs; }

    /// The size of the text when drawn without wrapping: the widest line by the sum of the line heights,
    /// in points, not rounded.
    NSSize size() const;

    /// This text if it is no wider than that, or else its beginning with an ellipsis, as much of it as there
    /// is room for: perhaps the ellipsis alone, however wide that is.
    Ref<NSAttributedString> truncatedToWidth(double width) const;

    /// Draws the text into the current graphics context from the top of `rect`, wrapped at word boundaries
    /// (a word wider than `rect` between characters), aligned in its width and clipped to it. Draws
    /// nothing into a rectangle without area.
    void drawInRect(NSRect rect) const;

    /// Draws the text into the current graphics context, neither wrapped nor clipped. `point` is the upper
    /// left corner of its size in a flipped view, the lower left one in others.
    void drawAtPoint(NSPoint point) const;

    /// A text that does not change: this one itself, unless it is mutable.
    virtual Ref<NSAttributedString> copy() const;
    bool isEqual(const NSObject* other) const override;

protected:
    ~NSAttributedString() override;

    NSObject* attributeAt(std::size_t key, std::size_t index, NSRange* effectiveRange, NSRange limit) const;

    Ref<NSString> _string; // never null
    std::vector<Run> _runs;
};

/// An attributed text that can be changed.
class TESSALINE_EXPORT NSMutableAttributedString : public NSAttributedString
{
public:
    NSMutableAttributedString* initWithString(NSString* string);
    NSMutableAttributedString* initWithAttributedString(const NSAttributedString* other);

    /// Sets one attribute over `range`, all others stay; a null value takes it away. Of a range that goes
    /// beyond the text, which is reported, the part inside counts.
    void addAttribute_value_range(const NSAttributes::Entry& attribute, NSRange range);
    template <class T>
    void addAttribute_value_range(NSAttributeKey<T> key, const Ref<T>& value, NSRange range)
    {
        addAttribute_value_range(NSAttributes::Entry(key, value), range);
    }

    /// Gives all of `range`, as far as it is within the text, these attributes and no others.
    void setAttributes_range(const NSAttributes& attributes, NSRange range);

    /// Sets one attribute where the text has none with that key.
    void addMissingAttribute(const NSAttributes::Entry& attribute);

    /// Takes over the text and attributes of another; null empties the text.
    void setAttributedString(const NSAttributedString* other);

    /// How often the text has changed; tells who keeps something made from it when to make it again.
    std::size_t changeCount() const { return _changeCount; }

    Ref<NSAttributedString> copy() const override;

private:
    /// Changes the attributes of the units in `range`, which is within the text.
    void change(NSRange range, const std::function<void(NSAttributes& attributes)>& change);

    /// The run that begins at `location`, dividing the one around it if need be.
    std::vector<Run>::iterator divideRunsAt(std::size_t location);

    /// Makes one of neighbours that are alike, among the runs from `first` (there is one) to `end`.
    void joinRuns(std::vector<Run>::iterator first, std::vector<Run>::iterator end);

    std::size_t _changeCount = 0;
};
