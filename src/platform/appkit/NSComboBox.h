#pragma once

#include "platform/appkit/NSTextField.h"
#include "platform/foundation/NSRange.h"

#include <string_view>

class ComboBoxEditor;
class NSComboBox;
class NSNotification;

/// Answers what the list of a combo box shows. To be implemented by an object (`NSObject`).
class TESSALINE_EXPORT NSComboBoxDataSource
{
public:
    virtual std::int64_t numberOfItemsInComboBox(NSComboBox* comboBox) = 0;
    /// What is shown as a cell shows it (`setObjectValue`), or null for no item.
    virtual Ref<NSObject> comboBox_objectValueForItemAtIndex(NSComboBox* comboBox, std::int64_t index) = 0;
    /// The item from which the user goes on while the combo box shows the text. Here `NSNotFound`, for none.
    virtual std::size_t comboBox_indexOfItemWithStringValue(NSComboBox* comboBox, NSString* text);
    /// A text that begins with what the user has typed, and is put into the combo box with the rest of it
    /// selected. Here, what was typed.
    virtual Ref<NSString> comboBox_completedString(NSComboBox* comboBox, NSString* text);

protected:
    ~NSComboBoxDataSource() = default;
};

/// What the delegate of a combo box may implement. To be implemented by an object (`NSObject`).
class TESSALINE_EXPORT NSComboBoxDelegate : public NSTextFieldDelegate
{
public:
    /// The user has chosen an item, the text of which the combo box has already. The notification's object
    /// is the combo box. Does nothing unless it is overridden.
    virtual void comboBoxSelectionDidChange(NSNotification* notification);

protected:
    ~NSComboBoxDelegate() = default;
};

inline constexpr std::u16string_view NSComboBoxSelectionDidChangeNotification =
    u"NSComboBoxSelectionDidChangeNotification";

/// A text field with a list to choose its text from, which the toolkit draws and operates: by a press on the
/// arrow, or anywhere if the text cannot be edited; by F4 and Alt with the down arrow; by the arrow keys and
/// the wheel without opening the list. An item that is chosen becomes the combo box's text; the delegate is
/// told (`NSComboBoxDelegate`), and the action is sent. There can be 2^31 - 1 items; those that show are
/// asked for.
class TESSALINE_EXPORT NSComboBox : public NSTextField
{
public:
    NSComboBox();

    NSComboBox* initWithFrame(NSRect frame) override;

    /// Whether the items are the data source's. Default no; there are none then. The setters ask for the
    /// items.
    bool usesDataSource() const { return _usesDataSource; }
    void setUsesDataSource(bool uses);
    /// Not retained.
    Ref<NSObject> dataSource() const { return _dataSource.get(); }
    void setDataSource(NSObject* dataSource);

    /// Asks for the items again, as opening the list does. None is the chosen one any more; the text stays.
    void reloadData();

    /// The item that the user chose last; -1 if there is none, or the text is no longer that item's.
    std::int64_t indexOfSelectedItem() const;

    /// Nothing: the toolkit does.
    void drawRect(NSRect rect) override;

    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    void viewDidHide() override;
    bool acceptsFirstResponder() const override { return isEnabled(); }
    /// The toolkit knows where the text is.
    void resetCursorRects() override {}

    /// Opens the list, as the keys that do so ask for. False, and nothing happens, while disabled; nothing
    /// opens, either, where the combo box is not on the screen.
    virtual bool accessibilityPerformShowMenu();

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSComboBox() override;

    NSRect textRect() const override { return bounds(); }

private:
    friend class ComboBoxEditor;

    bool needsEditor() const override { return true; }
    FieldEditor* makeEditor() override;

    /// Null while the combo box has no widget.
    ComboBoxEditor* editor() const;

    // What the editor asks and tells.
    std::int64_t numberOfItems();
    /// Null for no item.
    Ref<NSString> textOfItem(std::int64_t index);
    /// The item from which the user goes on; -1 for none.
    std::int64_t currentItem();
    Ref<NSString> completed(const Ref<NSString>& typed);
    void userDidChoose(std::int64_t index);

    Weak<NSObject> _dataSource;
    bool _usesDataSource = false;
    bool _pressed = false; // by a press that the toolkit got
    std::int64_t _chosen = -1;
    Ref<NSString> _chosenText; // null unless an item was chosen
};
