#include "platform/appkit/NSComboBox.h"

#include "platform/appkit/NSCell.h"
#include "platform/appkit/NSEvent.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSNotification.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/ComboBoxEditor.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&NSComboBox::usesDataSource, &NSComboBox::setUsesDataSource>("usesDataSource"),
    property<&NSComboBox::dataSource, &NSComboBox::setDataSource>("dataSource"),
};

/// The data source of a combo box, kept alive while it is asked.
class Source
{
public:
    explicit Source(const NSComboBox& comboBox)
        : _object(comboBox.usesDataSource() ? comboBox.dataSource() : nullptr),
          _source(dynamic_cast<NSComboBoxDataSource*>(_object.get()))
    {
    }

    explicit operator bool() const { return _source != nullptr; }
    NSComboBoxDataSource* operator->() const { return _source; }

private:
    Ref<NSObject> _object;
    NSComboBoxDataSource* _source;
};

} // namespace

constinit const ClassTable NSComboBox::table{
    "NSComboBox", &NSTextField::table, kProperties, {}, makeObject<NSComboBox>};

const ClassTable& NSComboBox::classTable() const
{
    return table;
}

std::size_t NSComboBoxDataSource::comboBox_indexOfItemWithStringValue(NSComboBox* /*comboBox*/,
                                                                      NSString* /*text*/)
{
    return NSNotFound;
}

Ref<NSString> NSComboBoxDataSource::comboBox_completedString(NSComboBox* /*comboBox*/, NSString* text)
{
    return text;
}

void NSComboBoxDelegate::comboBoxSelectionDidChange(NSNotification* /*notification*/) {}

NSComboBox::NSComboBox() = default;

NSComboBox::~NSComboBox() = default;

NSComboBox* NSComboBox::initWithFrame(NSRect frame)
{
    NSTextField::initWithFrame(frame);
    return this;
}

// Items

void NSComboBox::setUsesDataSource(bool uses)
{
    _usesDataSource = uses;
    reloadData();
}

void NSComboBox::setDataSource(NSObject* dataSource)
{
    _dataSource = dataSource;
    reloadData();
}

void NSComboBox::reloadData()
{
    const Ref<NSComboBox> self(this);
    _chosen = -1;
    _chosenText = nullptr;
    if (ComboBoxEditor* const shown = editor()) {
        shown->takeItems();
    }
}

std::int64_t NSComboBox::indexOfSelectedItem() const
{
    return _chosenText && _chosenText->isEqual(stringValue().get()) ? _chosen : -1;
}

std::int64_t NSComboBox::numberOfItems()
{
    const Source source(*this);
    return source ? source->numberOfItemsInComboBox(this) : 0;
}

Ref<NSString> NSComboBox::textOfItem(std::int64_t index)
{
    const Source source(*this);
    const Ref<NSObject> value = source ? source->comboBox_objectValueForItemAtIndex(this, index) : nullptr;
    if (!value) {
        return nullptr;
    }
    const Ref<NSCell> shown = make<NSCell>();
    shown->setObjectValue(value.get());
    return shown->stringValue();
}

std::int64_t NSComboBox::currentItem()
{
    const std::int64_t chosen = indexOfSelectedItem();
    if (const Source source(*this); source && chosen < 0) {
        const std::size_t found = source->comboBox_indexOfItemWithStringValue(this, stringValue().get());
        return found == NSNotFound ? -1 : static_cast<std::int64_t>(found);
    }
    return chosen;
}

Ref<NSString> NSComboBox::completed(const Ref<NSString>& typed)
{
    const Source source(*this);
    return source ? source->comboBox_completedString(this, typed.get()) : typed;
}

void NSComboBox::userDidChoose(std::int64_t index)
{
    const Ref<NSString> text = textOfItem(index);
    if (!text) {
        if (ComboBoxEditor* const shown = editor()) {
            shown->takeField();
        }
        return;
    }
    setStringValue(text);
    _chosen = index;
    _chosenText = text;
    const Ref<NSObject> listener = delegate();
    if (auto* const heard = dynamic_cast<NSComboBoxDelegate*>(listener.get())) {
        heard->comboBoxSelectionDidChange(
            NSNotification::notificationWithName_object(NSComboBoxSelectionDidChangeNotification, this)
                .get());
    }
    sendAction_to(action(), target().get());
}

// What the toolkit does

ComboBoxEditor* NSComboBox::editor() const
{
    return static_cast<ComboBoxEditor*>(_editor);
}

FieldEditor* NSComboBox::makeEditor()
{
    return new ComboBoxEditor(*this);
}

void NSComboBox::drawRect(NSRect /*rect*/) {}

void NSComboBox::mouseDown(NSEvent* event)
{
    _pressed = true;
    NSTextField::mouseDown(event);
}

void NSComboBox::mouseDragged(NSEvent* event)
{
    if (_pressed) {
        NSTextField::mouseDragged(event);
    }
}

void NSComboBox::mouseUp(NSEvent* event)
{
    if (std::exchange(_pressed, false)) {
        NSTextField::mouseUp(event);
    }
}

void NSComboBox::viewDidHide()
{
    NSTextField::viewDidHide();
    _pressed = false;
}

bool NSComboBox::accessibilityPerformShowMenu()
{
    if (!isEnabled()) {
        return false;
    }
    widget();
    editor()->openList();
    return true;
}
