#include "platform/qt/TextPictures.h"

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/OfApplication.h"
#include "platform/qt/TextLayout.h"

#include <QCache>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace
{

/// What decides the pixels of a text.
struct Key {
    std::uint64_t layout;
    quint64 color;
    double scaleX;
    double scaleY;
    double fractionX; // of a pixel, at which the text begins
    double fractionY;

    bool operator==(const Key&) const = default;
};

size_t qHash(const Key& key)
{
    return qHashMulti(QHashSeed::globalSeed(), key.layout, key.color, key.scaleX, key.fractionX,
                      key.fractionY);
}

struct Picture {
    QImage pixels;
    QPoint place; // of its corner, in pixels from that in which the text begins
};

/// The texts that were drawn more than once lately.
class Pictures
{
public:
    /// Null if there is none.
    const Picture* find(const Key& key) { return _pictures.object(key); }

    /// Whether a text was drawn in this way lately, of which note is taken.
    bool wasDrawn(const Key& key)
    {
        const size_t hash = qHash(key);
        return std::exchange(_drawn[hash % _drawn.size()], hash) == hash;
    }

    void add(const Key& key, Picture picture)
    {
        const qsizetype cost = kCostBesidePixels + picture.pixels.sizeInBytes();
        _pictures.insert(key, new Picture(std::move(picture)), cost);
    }

private:
    static constexpr qsizetype kCapacity = qsizetype{32} << 20; // bytes
    static constexpr qsizetype kCostBesidePixels = 256;

    QCache<Key, Picture> _pictures{kCapacity};
    /// Hashes of the keys, in places by themselves. A wrong one does no harm.
    std::array<size_t, 4096> _drawn{};
};

/// Whether one colour is all that there is to draw a text with besides its layout.
bool isPlain(const NSAttributedString& text)
{
    if (text.runs().size() != 1) {
        return false;
    }
    const NSNumber* underline = text.runs().front().attributes[NSUnderlineStyleAttributeName];
    return underline == nullptr || underline->integerValue() == NSUnderlineStyleNone;
}

/// Where the pixels do not depend on those that were there.
bool paintsOver(const QPainter& painter)
{
    return painter.paintEngine()->type() == QPaintEngine::Raster &&
           painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

bool isUpright(const QTransform& transform)
{
    return transform.type() <= QTransform::TxScale && transform.m11() > 0.0 && transform.m22() > 0.0;
}

constexpr double kLargest = 1 << 18;  // picture, in pixels
constexpr double kFarthest = 1 << 24; // place of a pixel

/// Of a text that begins in the pixel at 0, 0. Its pixels are null if it would be too large.
Picture pictureOf(const TextLayout& layout, const NSAttributedString& text, const QTransform& toPixels)
{
    const QRectF ink = toPixels.mapRect(toQt(layout.inkRect()));
    if (ink.width() * ink.height() > kLargest) {
        return {};
    }
    const QRect place = ink.toAlignedRect().adjusted(-1, -1, 1, 1); // what antialiasing adds
    QImage pixels(place.size(), QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setTransform(toPixels * QTransform::fromTranslate(-place.x(), -place.y()));
    layout.draw(painter, {}, text, {0, text.length()});
    painter.end();
    return {std::move(pixels), place.topLeft()};
}

/// Of a text that begins in `pixel` of the painter's device.
void drawPicture(QPainter& painter, const QTransform& transform, QPoint pixel, const Picture& picture)
{
    const QTransform world = painter.worldTransform();
    painter.setWorldTransform(transform.inverted() * world); // a pixel to the unit
    painter.drawImage(pixel + picture.place, picture.pixels);
    painter.setWorldTransform(world);
}

} // namespace

void drawText(QPainter& painter, QPointF origin, const TextLayout& layout, const NSAttributedString& text)
{
    const auto draw = [&] { layout.draw(painter, origin, text, {0, text.length()}); };
    const QTransform transform = painter.deviceTransform();
    const QPointF begin = transform.map(origin);
    const NSSize size = layout.size();
    const bool fits = size.width * size.height * transform.determinant() <= kLargest &&
                      std::abs(begin.x()) <= kFarthest && std::abs(begin.y()) <= kFarthest;
    if (!fits || !isPlain(text) || !isUpright(transform) || !paintsOver(painter)) {
        draw();
        return;
    }
    const QPointF pixel(std::floor(begin.x()), std::floor(begin.y()));
    const QPointF fraction = begin - pixel;
    const NSColor* color = text.runs().front().attributes[NSForegroundColorAttributeName];
    const Key key{layout.identifier(), (color == nullptr ? QColor(Qt::black) : toQt(*color)).rgba64(),
                  transform.m11(),     transform.m22(),
                  fraction.x(),        fraction.y()};
    auto& pictures = ofApplication<Pictures>();
    if (const Picture* picture = pictures.find(key)) {
        drawPicture(painter, transform, pixel.toPoint(), *picture);
        return;
    }
    draw();
    if (pictures.wasDrawn(key)) {
        const QTransform toPixels(transform.m11(), 0.0, 0.0, transform.m22(), fraction.x(), fraction.y());
        Picture picture = pictureOf(layout, text, toPixels);
        if (!picture.pixels.isNull()) {
            pictures.add(key, std::move(picture));
        }
    }
}
