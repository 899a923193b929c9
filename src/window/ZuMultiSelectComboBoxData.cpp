#include "window/ZuMultiSelectComboBoxData.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSString.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&ZuMultiSelectComboBoxData::isCheck, &ZuMultiSelectComboBoxData::setIsCheck>("isCheck"),
    property<&ZuMultiSelectComboBoxData::key, &ZuMultiSelectComboBoxData::setKey>("key"),
    property<&ZuMultiSelectComboBoxData::value, &ZuMultiSelectComboBoxData::setValue>("value"),
};

} // namespace

constinit const ClassTable ZuMultiSelectComboBoxData::table{
    "ZuMultiSelectComboBoxData", &NSObject::table, kProperties, {}};

const ClassTable& ZuMultiSelectComboBoxData::classTable() const
{
    return table;
}

ZuMultiSelectComboBoxData::ZuMultiSelectComboBoxData() = default;

ZuMultiSelectComboBoxData::~ZuMultiSelectComboBoxData() = default;

Ref<NSString> ZuMultiSelectComboBoxData::key() const
{
    return _key.get();
}

void ZuMultiSelectComboBoxData::setKey(Ref<NSString> key)
{
    _key.set(key);
}

Ref<NSString> ZuMultiSelectComboBoxData::value() const
{
    return _value.get();
}

void ZuMultiSelectComboBoxData::setValue(Ref<NSString> value)
{
    _value.set(value);
}
