#include "platform/graphics/NSFont.h"

#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/OfApplication.h"

#include <QCache>
#include <QFontDatabase>
#include <QGuiApplication>

#include <array>
#include <cmath>
#include <utility>

namespace
{

/// Families that share their metrics with a widespread one, and so keep its layouts.
struct Substitute {
    QLatin1String family;
    QLatin1String stand_in;
};
constexpr std::array kSubstitutes{
    Substitute{QLatin1String("Arial"), QLatin1String("Liberation Sans")},
};

QString installedFamily(const QString& family)
{
    if (QFontDatabase::hasFamily(family)) {
        return family;
    }
    for (const Substitute& substitute : kSubstitutes) {
        if (family.compare(substitute.family, Qt::CaseInsensitive) == 0 &&
            QFontDatabase::hasFamily(substitute.stand_in)) {
            return substitute.stand_in;
        }
    }
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

/// Removes `word` from the end of `name`, where it stands as a word of its own.
bool takeStyleWord(QString& name, QLatin1String word)
{
    if (!name.endsWith(QLatin1Char(' ') + word, Qt::CaseInsensitive)) {
        return false;
    }
    name.chop(word.size() + 1);
    return true;
}

/// Fonts by the name and size that they were asked for with: finding one takes long.
class FoundFonts : public QCache<std::pair<QByteArray, double>, Ref<NSFont>>
{
public:
    FoundFonts()
    {
        QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, &_context, [this] { clear(); });
    }

private:
    QObject _context;
};

} // namespace

NSFont::NSFont(std::unique_ptr<Native> native) : _native(std::move(native)) {}

NSFont::~NSFont() = default;

Ref<NSFont> NSFont::fontWithName_size(const char* name, double size)
{
    constexpr double kLargestSize = 10000.0;
    const double pointSize = size > 0.0 && std::isfinite(size) ? std::min(size, kLargestSize) : kDefaultSize;
    auto& found = ofApplication<FoundFonts>();
    const auto key = QByteArray::fromRawData(name, static_cast<qsizetype>(qstrlen(name)));
    if (const Ref<NSFont>* font = found.object({key, pointSize})) {
        return *font;
    }
    auto native = std::make_unique<Native>();
    native->name = QString::fromUtf8(name);
    native->pointSize = pointSize;

    QString family = native->name;
    bool italic = false;
    bool bold = false;
    if (!QFontDatabase::hasFamily(family)) {
        italic = takeStyleWord(family, QLatin1String("Italic"));
        bold = takeStyleWord(family, QLatin1String("Bold"));
    }
    native->font.setFamilies({installedFamily(family)});
    native->font.setItalic(italic);
    native->font.setBold(bold);
    // Unhinted, so that widths scale exactly with the size and do not depend on the screen.
    native->font.setHintingPreference(QFont::PreferNoHinting);
    // In grey, not in the screen's coloured fractions of pixels: what is painted must not depend on what is
    // behind it.
    native->font.setStyleStrategy(QFont::NoSubpixelAntialias);
    const double wholeSize = std::ceil(native->pointSize);
    native->font.setPixelSize(static_cast<int>(wholeSize));
    native->scale = native->pointSize / wholeSize;
    Ref<NSFont> font = make<NSFont>(std::move(native));
    found.insert({QByteArray(name), pointSize}, new Ref<NSFont>(font));
    return font;
}

Ref<NSString> NSFont::fontName() const
{
    return fromQt(_native->name);
}

double NSFont::pointSize() const
{
    return _native->pointSize;
}

bool NSFont::isEqual(const NSObject* other) const
{
    const auto* font = dynamic_cast<const NSFont*>(other);
    return font != nullptr && _native->font == font->_native->font && pointSize() == font->pointSize();
}
