#include "platform/foundation/NSUserDefaults.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <mutex>
#include <utility>

namespace
{

struct Standard {
    std::mutex mutex;
    Ref<NSUserDefaults> defaults; // guarded by mutex; null until asked for or set
};

Standard& standard()
{
    static Standard standard;
    return standard;
}

Ref<NSString> pathOf(const NSString* domain)
{
    QString name = domain == nullptr ? QString() : toQt(*domain);
    if (name.startsWith(u'/')) {
        return fromQt(name);
    }
    if (name.isEmpty()) {
        const Ref<NSString> program = NSBundle::mainBundle()->executablePath();
        name = program ? QFileInfo(toQt(*program)).fileName() : QStringLiteral("tessaline");
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return fromQt(folder + u'/' + name + QLatin1String(".ini"));
}

/// In Qt's keys slashes, in either direction, divide groups, and a group goes with its key.
QString keyOf(const NSString& key)
{
    return toQt(key)
        .replace(u'%', QLatin1String("%25"))
        .replace(u'/', QLatin1String("%2F"))
        .replace(u'\\', QLatin1String("%5C"));
}

/// The file holds texts as they are, so numbers are kept as bytes, to be told from them.
QByteArray bytesOf(const NSNumber& number)
{
    return number.isInteger() ? QByteArray::number(static_cast<qlonglong>(number.integerValue()))
                              : QByteArray::fromStdString(NSStringFromNumber(number.doubleValue()));
}

Ref<NSObject> objectOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString) {
        return fromQt(value.toString());
    }
    if (value.typeId() != QMetaType::QByteArray) {
        return nullptr;
    }
    const QByteArray bytes = value.toByteArray();
    bool isNumber = false;
    if (const qlonglong integer = bytes.toLongLong(&isNumber); isNumber) {
        return NSNumber::numberWithInteger(integer);
    }
    const double number = bytes.toDouble(&isNumber);
    return isNumber ? NSNumber::numberWithDouble(number) : nullptr;
}

} // namespace

NSUserDefaults::NSUserDefaults(Ref<NSString> path) : _path(std::move(path)) {}

NSUserDefaults::~NSUserDefaults() = default;

Ref<NSUserDefaults> NSUserDefaults::standardUserDefaults()
{
    const std::scoped_lock lock(standard().mutex);
    if (!standard().defaults) {
        standard().defaults = make<NSUserDefaults>(pathOf(nullptr));
    }
    return standard().defaults;
}

void NSUserDefaults::setStandardDomain(NSString* domain)
{
    const std::scoped_lock lock(standard().mutex);
    standard().defaults = make<NSUserDefaults>(pathOf(domain));
}

Ref<NSObject> NSUserDefaults::objectForKey(NSString* key) const
{
    if (key == nullptr || key->length() == 0) {
        return nullptr;
    }
    const std::scoped_lock lock(_mutex);
    Ref<NSObject> kept;
    if (const auto unwritten = _unwritten.find(key->characters()); unwritten != _unwritten.end()) {
        kept = unwritten->second;
    } else {
        kept = objectOf(QSettings(toQt(*_path), QSettings::IniFormat).value(keyOf(*key)));
    }
    const auto registered = _registered.find(key->characters());
    return kept || registered == _registered.end() ? kept : registered->second;
}

void NSUserDefaults::registerDefault_forKey(Ref<NSObject> object, NSString* key)
{
    if (key != nullptr) {
        const std::scoped_lock lock(_mutex);
        _registered[std::u16string(key->characters())] = std::move(object);
    }
}

void NSUserDefaults::setObject_forKey(NSObject* object, NSString* key)
{
    const auto* text = dynamic_cast<const NSString*>(object);
    const auto* number = dynamic_cast<const NSNumber*>(object);
    if (key == nullptr || key->length() == 0 || (object != nullptr && text == nullptr && number == nullptr)) {
        diagnose("NSUserDefaults setObject", "the key is empty or the object neither a text nor a number");
        return;
    }
    QSettings settings(toQt(*_path), QSettings::IniFormat);
    if (object == nullptr) {
        settings.remove(keyOf(*key));
    } else {
        settings.setValue(keyOf(*key), text == nullptr ? QVariant(bytesOf(*number)) : QVariant(toQt(*text)));
    }
    settings.sync();
    const std::scoped_lock lock(_mutex);
    if (settings.status() == QSettings::AccessError) {
        diagnose("NSUserDefaults setObject", '"' + _path->UTF8String() + "\" cannot be written");
        _unwritten[std::u16string(key->characters())] = object;
    } else {
        _unwritten.erase(std::u16string(key->characters()));
    }
}

void NSUserDefaults::removeObjectForKey(NSString* key)
{
    setObject_forKey(nullptr, key);
}
