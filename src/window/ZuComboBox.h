#pragma once

#include "platform/appkit/NSComboBox.h"

template <class T> class NSMutableArray;

/// A combo box whose list shows texts that the application fills in. It is its own data source and, until
/// another is set, its own delegate; typing never completes to an entry of the list.
///
/// The application changes `values_`, and `keys_` if it needs them, and calls `reloadData`.
class TESSALINE_EXPORT ZuComboBox : public NSComboBox, public NSComboBoxDataSource, public NSComboBoxDelegate
{
public:
    ZuComboBox();

    /// Places the combo box and sets it up (`setUp`).
    ZuComboBox* initWithFrame(NSRect frame) override;
    /// Sets the combo box up.
    void awakeFromNib() override;
    /// Has the combo box ask itself for its items, as its own delegate, and makes both lists. Does nothing
    /// once there are lists.
    void setUp();

    /// The lists themselves, not copies; null until `setUp`. `values_` are the texts of the list, in its
    /// order; `keys_` are the application's, and never looked at.
    Ref<NSMutableArray<NSString>> values_() const;
    Ref<NSMutableArray<NSString>> keys_() const;

    /// The first of equal texts; `NSNotFound` if there is none.
    std::size_t indexOfItemWithStringValue(NSString* text) const;

    std::int64_t numberOfItemsInComboBox(NSComboBox* comboBox) override;
    /// Null for an index that there is not.
    Ref<NSObject> comboBox_objectValueForItemAtIndex(NSComboBox* comboBox, std::int64_t index) override;
    std::size_t comboBox_indexOfItemWithStringValue(NSComboBox* comboBox, NSString* text) override;
    Ref<NSString> comboBox_completedString(NSComboBox* comboBox, NSString* text) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuComboBox() override;

private:
    Ref<NSMutableArray<NSString>> _values;
    Ref<NSMutableArray<NSString>> _keys;
};
