#include "platform/foundation/NSUUID.h"

#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"

#include <QUuid>

NSUUID::NSUUID(Ref<NSString> text) : _text(std::move(text)) {}

NSUUID::~NSUUID() = default;

Ref<NSUUID> NSUUID::UUID()
{
    return make<NSUUID>(fromQt(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()));
}

Ref<NSString> NSUUID::UUIDString() const
{
    return _text;
}

bool NSUUID::isEqual(const NSObject* other) const
{
    const auto* identifier = dynamic_cast<const NSUUID*>(other);
    return identifier != nullptr && _text->isEqual(identifier->_text.get());
}
