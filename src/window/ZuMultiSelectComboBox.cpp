#include "window/ZuMultiSelectComboBox.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSMutableArray.h"
#include "platform/foundation/NSString.h"
#include "window/ZuMultiSelectComboBoxData.h"

constinit const ClassTable ZuMultiSelectComboBox::table{
    "ZuMultiSelectComboBox", &NSComboBox::table, {}, {}, makeObject<ZuMultiSelectComboBox>};

const ClassTable& ZuMultiSelectComboBox::classTable() const
{
    return table;
}

ZuMultiSelectComboBox::ZuMultiSelectComboBox() = default;

ZuMultiSelectComboBox::~ZuMultiSelectComboBox() = default;

ZuMultiSelectComboBox* ZuMultiSelectComboBox::initWithFrame(NSRect frame)
{
    NSComboBox::initWithFrame(frame);
    setUp();
    return this;
}

void ZuMultiSelectComboBox::awakeFromNib()
{
    setUp();
}

void ZuMultiSelectComboBox::setUp()
{
    if (!_values) {
        _values = make<NSMutableArray<ZuMultiSelectComboBoxData>>();
    }
}

Ref<NSMutableArray<ZuMultiSelectComboBoxData>> ZuMultiSelectComboBox::values_() const
{
    return _values;
}

void ZuMultiSelectComboBox::setCheckValue()
{
    if (!_values) {
        return;
    }
    std::u16string text;
    for (const Ref<ZuMultiSelectComboBoxData>& choice : *_values) {
        if (choice->isCheck()) {
            if (const Ref<NSString> value = choice->value()) {
                text += value->characters();
            }
            text += u',';
        }
    }
    if (!text.empty()) {
        setStringValue(NSString::stringWithCharacters(text));
    }
}

void ZuMultiSelectComboBox::popoverDidClose(NSNotification* /*notification*/)
{
    setCheckValue();
}

void ZuMultiSelectComboBox::mouseDown(NSEvent* /*event*/)
{
    accessibilityPerformShowMenu();
}

bool ZuMultiSelectComboBox::accessibilityPerformShowMenu()
{
    const Ref<NSObject> receiver = isEnabled() ? delegate() : nullptr;
    return receiver && receiver->performSelector_withObject(SEL{"PopOver:"}, this);
}
