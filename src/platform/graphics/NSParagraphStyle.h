#pragma once

#include "platform/foundation/NSObject.h"

/// Where the lines of a paragraph stand in the width that they have. Natural is left, or right for a
/// paragraph written from right to left; the last line of a justified paragraph is natural.
enum class NSTextAlignment : long { Left = 0, Right = 1, Center = 2, Justified = 3, Natural = 4 };

/// How a paragraph is set. The base class does not change once it is set up.
class TESSALINE_EXPORT NSParagraphStyle : public NSObject
{
public:
    /// Initially natural.
    NSTextAlignment alignment() const { return _alignment; }

    bool isEqual(const NSObject* other) const override;

protected:
    NSTextAlignment _alignment = NSTextAlignment::Natural;
};

/// A paragraph style that can be set up. That is done before a text has it as an attribute: texts keep the
/// style itself, and later changes show in them sooner or later.
class TESSALINE_EXPORT NSMutableParagraphStyle final : public NSParagraphStyle
{
public:
    void setAlignment(NSTextAlignment alignment) { _alignment = alignment; }
};
