#pragma once

#include "platform/appkit/NSView.h"
#include "platform/foundation/Weak.h"

class NSTableView;

/// Shows a table, with its header above, as far as there is room, and lets the user scroll to the rest. The
/// scroll view keeps the table alive; both it and its header become subviews, whose frames the scroll view
/// keeps to where they are scrolled to.
class TESSALINE_EXPORT NSScrollView : public NSView
{
public:
    NSScrollView* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }

    /// Null for none.
    Ref<NSTableView> documentView() const;
    void setDocumentView(Ref<NSTableView> view);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSScrollView() override;

private:
    Weak<NSTableView> _documentView; // a subview, which is what keeps it alive
};
