#pragma once

#include "platform/appkit/NSView.h"

class NSColor;

/// A view that is nothing but a line, along its lower or its left edge, solid or dashed. The line is as
/// thick as the drawn rectangle is high, and centred on the edge: of a horizontal one the upper half shows,
/// in the lower half of the view; a vertical one fills a view that is narrower than half its height.
///
/// The defaults below are set by `awakeFromNib`, in place of what was set before; a line made in code has
/// no colour until it is given one. Setters only store: a new value shows at the next redraw. The properties
/// can be read and written from any thread, everything else belongs to the user-interface thread.
class TESSALINE_EXPORT ZuLine : public NSView
{
public:
    /// Values of `type_`; with any other nothing shows.
    static constexpr std::int32_t kHorizontal = 0;
    static constexpr std::int32_t kVertical = 1;

    /// Values of `style_`; any other is solid, too. Dashes are 3 points long and 1 apart.
    static constexpr std::int32_t kSolid = 0;
    static constexpr std::int32_t kDashed = 1;

    ZuLine();

    ZuLine* initWithFrame(NSRect frame) override;
    void awakeFromNib() override;

    /// Draws from the view's origin, whichever that of `rect` is, as far as `rect` is wide or high.
    void drawRect(NSRect rect) override;

    /// Default `kHorizontal`.
    std::int32_t type_() const { return _type_.get(); }
    void setType_(std::int32_t type) { _type_.set(type); }

    /// Default `kSolid`.
    std::int32_t style_() const { return _style_.get(); }
    void setStyle_(std::int32_t style) { _style_.set(style); }

    /// Default black; with null nothing is drawn.
    Ref<NSColor> color_() const;
    void setColor_(Ref<NSColor> color);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuLine() override;

private:
    PlainProperty<std::int32_t> _style_;
    PlainProperty<std::int32_t> _type_;
    RetainProperty<NSColor> _color_;
};
