#include "platform/qt/TextLayout.h"

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSAttributes.h"
#include "platform/graphics/NSFont.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"

#include <QCache>
#include <QCoreApplication>
#include <QPainter>

#include <utility>

namespace
{

struct Key {
    QString text;
    QFont font;
    double scale;
    double width;

    bool operator==(const Key&) const = default;
};

size_t qHash(const Key& key, size_t seed = 0)
{
    return qHashMulti(seed, key.text, key.font, key.scale, key.width);
}

using Cache = QCache<Key, std::shared_ptr<const TextLayout>>;

/// What a layout costs beside its characters, in characters.
constexpr int kLayoutCost = 64;

/// Goes with the application, since layouts must not outlive its fonts; another application gets another.
Cache& cache()
{
    constexpr int kCapacity = 256 * 1024; // characters
    static Cache* layouts = nullptr;
    if (layouts == nullptr) {
        layouts = new Cache(kCapacity);
        qAddPostRoutine([] { delete std::exchange(layouts, nullptr); });
    }
    return *layouts;
}

/// The texts between line ends. A line end at the end of the text begins one more, empty paragraph.
QStringList paragraphs(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    return text.split(QLatin1Char('\n'));
}

} // namespace

std::shared_ptr<const TextLayout> TextLayout::of(const NSString& text, const NSAttributes& attributes,
                                                 double width)
{
    const NSFont* font = attributes[NSFontAttributeName];
    Ref<NSFont> defaultFont;
    if (font == nullptr) {
        defaultFont = NSFont::fontWithName_size("Arial", NSFont::kDefaultSize);
        font = defaultFont.get();
    }
    const Key key{toQt(text), font->native().font, font->native().scale, width};
    if (const auto* cached = cache().object(key)) {
        return *cached;
    }
    auto layout = std::make_shared<const TextLayout>(key.text, key.font, key.scale, width);
    cache().insert(key, new std::shared_ptr<const TextLayout>(layout), key.text.size() + kLayoutCost);
    return layout;
}

TextLayout::TextLayout(const QString& text, const QFont& font, double scale, double width) : _scale(scale)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setUseDesignMetrics(true);
    constexpr double kWidest = 1 << 23; // that a line can be given
    const qreal lineWidth = width == kUnlimited ? kWidest : width / scale;
    for (const QString& paragraph : paragraphs(text)) {
        auto layout = std::make_unique<QTextLayout>(paragraph, font);
        layout->setTextOption(option);
        layout->setCacheEnabled(true);
        layout->beginLayout();
        for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
            line.setLineWidth(lineWidth);
            line.setPosition({0.0, _size.height});
            _size.width = std::max(_size.width, line.naturalTextWidth());
            _size.height += line.ascent() + line.descent();
        }
        layout->endLayout();
        _paragraphs.push_back(std::move(layout));
    }
    _size = {_size.width * scale, _size.height * scale};
}

void TextLayout::draw(QPainter& painter, QPointF origin) const
{
    painter.save();
    painter.translate(origin);
    painter.scale(_scale, _scale);
    for (const auto& paragraph : _paragraphs) {
        paragraph->draw(&painter, {});
    }
    painter.restore();
}
