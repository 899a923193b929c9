#pragma once

#include "platform/appkit/NSComboBox.h"
#include "platform/appkit/NSPopover.h"

class ZuMultiSelectComboBoxData;
template <class T> class NSMutableArray;

/// A combo box whose text lists checked choices. It has no list of its own: a press, and the keys that open
/// lists, send `PopOver:` with the combo box to its delegate, who shows a pop-over in which the user checks
/// choices, with the combo box as the pop-over's delegate; when that closes, the text is written anew. A
/// press never begins to edit the text; without a delegate, or
/// while disabled, nothing happens.
class TESSALINE_EXPORT ZuMultiSelectComboBox : public NSComboBox, public NSPopoverDelegate
{
public:
    ZuMultiSelectComboBox();

    /// Places the combo box and sets it up (`setUp`).
    ZuMultiSelectComboBox* initWithFrame(NSRect frame) override;
    /// Sets the combo box up.
    void awakeFromNib() override;
    /// Makes the list of choices. Does nothing once there is one.
    void setUp();

    /// The choices in their order: the list itself, not a copy, which the application fills. Null until
    /// `setUp`.
    Ref<NSMutableArray<ZuMultiSelectComboBoxData>> values_() const;

    /// Makes the text of the values of the checked choices, a comma behind each, a null value being empty. If
    /// none is checked, the text stays.
    void setCheckValue();

    /// Does that.
    void popoverDidClose(NSNotification* notification) override;

    void mouseDown(NSEvent* event) override;
    bool accessibilityPerformShowMenu() override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuMultiSelectComboBox() override;

private:
    Ref<NSMutableArray<ZuMultiSelectComboBoxData>> _values;
};
