#include "platform/foundation/NSBundle.h"

#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

Ref<NSBundle> NSBundle::mainBundle()
{
    static const Ref<NSBundle> bundle = make<NSBundle>();
    return bundle;
}

Ref<NSString> NSBundle::pathForResource_ofType(NSString* name, NSString* type) const
{
    if (name == nullptr || type == nullptr) {
        return nullptr;
    }
    const QDir program(QCoreApplication::applicationDirPath());
    const QString file = toQt(*name) + QLatin1Char('.') + toQt(*type);
    for (const char* folder : {"Resources", "../Resources"}) {
        const QFileInfo resource(program.filePath(QLatin1String(folder)), file);
        if (resource.isFile()) {
            return fromQt(resource.absoluteFilePath());
        }
    }
    return nullptr;
}
