#pragma once

#include "platform/foundation/NSObject.h"

#include <memory>

class NSString;

/// An immutable font of a size in points. One point is one unit of the drawing's coordinates, whatever
/// the resolution of the screen.
class TESSALINE_EXPORT NSFont final : public NSObject
{
public:
    /// Size that a request without a usable one gets.
    static constexpr double kDefaultSize = 12.0;

    /// Looks a font up by family name, with the style's words behind it ("Arial Bold", "Arial Bold
    /// Italic"). Never null: where the family is not installed one of the same metrics is taken if there
    /// is one (Liberation Sans for Arial), else the system's default family, in the asked style and size.
    /// A size that is not greater than zero, or not finite, becomes `kDefaultSize`; the largest is 10,000.
    static Ref<NSFont> fontWithName_size(const char* name, double size);

    /// The name that was asked for.
    Ref<NSString> fontName() const;
    double pointSize() const;

    bool isEqual(const NSObject* other) const override;

    /// The toolkit's side of the font; defined inside the platform layer.
    struct Native;
    const Native& native() const { return *_native; }

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSFont(std::unique_ptr<Native> native);
    ~NSFont() override;

    std::unique_ptr<Native> _native;
};
