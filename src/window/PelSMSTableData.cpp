#include "window/PelSMSTableData.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&PelSMSTableData::progressBarDouble, &PelSMSTableData::setProgressBarDouble>(
        "progressBarDouble"),
    property<&PelSMSTableData::check, &PelSMSTableData::setCheck>("check"),
    property<&PelSMSTableData::image, &PelSMSTableData::setImage>("image"),
    property<&PelSMSTableData::title, &PelSMSTableData::setTitle>("title"),
    property<&PelSMSTableData::contactsName, &PelSMSTableData::setContactsName>("contactsName"),
    property<&PelSMSTableData::phoneNumber, &PelSMSTableData::setPhoneNumber>("phoneNumber"),
    property<&PelSMSTableData::isChecked, &PelSMSTableData::setIsChecked>("isChecked"),
};

} // namespace

constinit const ClassTable PelSMSTableData::table{"PelSMSTableData", &NSObject::table, kProperties, {}};

const ClassTable& PelSMSTableData::classTable() const
{
    return table;
}

PelSMSTableData::PelSMSTableData() = default;

PelSMSTableData::~PelSMSTableData() = default;

PelSMSTableData* PelSMSTableData::init()
{
    setProgressBarDouble(0.0);
    setCheck(nullptr);
    setImage(nullptr);
    setTitle(nullptr);
    setContactsName(nullptr);
    setPhoneNumber(nullptr);
    setIsChecked(0);
    setCUserdata(nullptr);
    return this;
}

Ref<NSString> PelSMSTableData::check() const
{
    return _check.get();
}

void PelSMSTableData::setCheck(Ref<NSString> check)
{
    _check.set(check);
}

Ref<NSImage> PelSMSTableData::image() const
{
    return _image.get();
}

void PelSMSTableData::setImage(Ref<NSImage> image)
{
    _image.set(image);
}

Ref<NSString> PelSMSTableData::title() const
{
    return _title.get();
}

void PelSMSTableData::setTitle(Ref<NSString> title)
{
    _title.set(title);
}

Ref<NSString> PelSMSTableData::contactsName() const
{
    return _contactsName.get();
}

void PelSMSTableData::setContactsName(Ref<NSString> name)
{
    _contactsName.set(name);
}

Ref<NSString> PelSMSTableData::phoneNumber() const
{
    return _phoneNumber.get();
}

void PelSMSTableData::setPhoneNumber(Ref<NSString> number)
{
    _phoneNumber.set(number);
}
