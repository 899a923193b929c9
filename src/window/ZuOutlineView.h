#pragma once

#include "platform/appkit/NSOutlineView.h"

/// An outline that carries a background image for the application.
class TESSALINE_EXPORT ZuOutlineView : public NSOutlineView
{
public:
    ZuOutlineView* initWithFrame(NSRect frame) override;

    /// Never drawn here, and not kept alive. Default null.
    Ref<NSImage> backgroundImage_() const;
    void setBackgroundImage_(NSImage* image);

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    Weak<NSImage> _backgroundImage_;
};
