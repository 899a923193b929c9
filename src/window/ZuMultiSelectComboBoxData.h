#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/foundation/Property.h"

class NSString;

/// One choice of a `ZuMultiSelectComboBox`. All properties can be read and written from any thread.
class TESSALINE_EXPORT ZuMultiSelectComboBoxData : public NSObject
{
public:
    ZuMultiSelectComboBoxData();

    /// Default no.
    bool isCheck() const { return _isCheck.get(); }
    void setIsCheck(bool check) { _isCheck.set(check); }

    /// The application's identifier of the choice. Copied, default null.
    Ref<NSString> key() const;
    void setKey(Ref<NSString> key);

    /// What stands in the combo box when the choice is checked. Copied, default null.
    Ref<NSString> value() const;
    void setValue(Ref<NSString> value);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuMultiSelectComboBoxData() override;

private:
    PlainProperty<bool> _isCheck;
    CopyProperty<NSString> _key;
    CopyProperty<NSString> _value;
};
