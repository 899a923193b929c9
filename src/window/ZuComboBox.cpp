#include "window/ZuComboBox.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSMutableArray.h"
#include "platform/foundation/NSString.h"

constinit const ClassTable ZuComboBox::table{
    "ZuComboBox", &NSComboBox::table, {}, {}, makeObject<ZuComboBox>};

const ClassTable& ZuComboBox::classTable() const
{
    return table;
}

ZuComboBox::ZuComboBox() = default;

ZuComboBox::~ZuComboBox() = default;

ZuComboBox* ZuComboBox::initWithFrame(NSRect frame)
{
    NSComboBox::initWithFrame(frame);
    setUp();
    return this;
}

void ZuComboBox::awakeFromNib()
{
    setUp();
}

void ZuComboBox::setUp()
{
    if (_values) {
        return;
    }
    setUsesDataSource(true);
    setDataSource(this);
    setDelegate(this);
    _values = make<NSMutableArray<NSString>>();
    _keys = make<NSMutableArray<NSString>>();
}

Ref<NSMutableArray<NSString>> ZuComboBox::values_() const
{
    return _values;
}

Ref<NSMutableArray<NSString>> ZuComboBox::keys_() const
{
    return _keys;
}

std::size_t ZuComboBox::indexOfItemWithStringValue(NSString* text) const
{
    return _values ? _values->indexOfObject(text) : NSNotFound;
}

std::int64_t ZuComboBox::numberOfItemsInComboBox(NSComboBox* /*comboBox*/)
{
    return _values ? static_cast<std::int64_t>(_values->count()) : 0;
}

Ref<NSObject> ZuComboBox::comboBox_objectValueForItemAtIndex(NSComboBox* comboBox, std::int64_t index)
{
    if (index < 0 || index >= numberOfItemsInComboBox(comboBox)) {
        return nullptr;
    }
    return _values->objectAtIndex(static_cast<std::size_t>(index));
}

std::size_t ZuComboBox::comboBox_indexOfItemWithStringValue(NSComboBox* /*comboBox*/, NSString* text)
{
    return indexOfItemWithStringValue(text);
}

Ref<NSString> ZuComboBox::comboBox_completedString(NSComboBox* /*comboBox*/, NSString* text)
{
    return text;
}
