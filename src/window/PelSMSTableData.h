#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/foundation/Property.h"

#include <cstdint>

class NSImage;
class NSString;

/// A message in the list of messages, as the application keeps it: it makes one for each row, and fills the
/// cells that draw the row from it. Setters store and notify no one. All properties can be read and written
/// from any thread.
///
/// Texts and image are copied when they are set: what later becomes of the original does not show.
class TESSALINE_EXPORT PelSMSTableData : public NSObject
{
public:
    PelSMSTableData();

    /// Sets all values to their defaults.
    PelSMSTableData* init();

    /// For the application, in any unit. Default 0.
    double progressBarDouble() const { return _progressBarDouble.get(); }
    void setProgressBarDouble(double progress) { _progressBarDouble.set(progress); }

    /// For the application. Default null.
    Ref<NSString> check() const;
    void setCheck(Ref<NSString> check);

    /// The small picture of the row. Default null.
    Ref<NSImage> image() const;
    void setImage(Ref<NSImage> image);

    /// Default null.
    Ref<NSString> title() const;
    void setTitle(Ref<NSString> title);

    /// Default null.
    Ref<NSString> contactsName() const;
    void setContactsName(Ref<NSString> name);

    /// Default null.
    Ref<NSString> phoneNumber() const;
    void setPhoneNumber(Ref<NSString> number);

    /// 0 is no and anything else yes, kept as given. Default 0.
    std::int8_t isChecked() const { return _isChecked.get(); }
    void setIsChecked(std::int8_t checked) { _isChecked.set(checked); }

    /// Data of the application, which is never looked at, copied or freed. Default null.
    void* cUserdata() const { return _cUserdata.get(); }
    void setCUserdata(void* data) { _cUserdata.set(data); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~PelSMSTableData() override;

private:
    PlainProperty<double> _progressBarDouble;
    CopyProperty<NSString> _check;
    CopyProperty<NSString> _contactsName;
    CopyProperty<NSString> _phoneNumber;
    CopyProperty<NSString> _title;
    CopyProperty<NSImage> _image;
    PlainProperty<std::int8_t> _isChecked;
    PlainProperty<void*> _cUserdata;
};
