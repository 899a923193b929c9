#include "platform/qt/TextLayout.h"

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/OfApplication.h"

#include <QCache>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace
{

constexpr double kTabInterval = 28.0;          // points
constexpr double kRounding = 1.0 / 64.0;       // of the widths that text is shaped in
constexpr double kLongestLine = (1 << 24) - 1; // that the shaper can set

/// Borrows from its layout, or from who looks for one.
struct Key {
    QStringView text;
    const TextLayout::Runs* runs;
    double width;
    size_t hash; // of all but the width: a text has a layout or two

    bool operator==(const Key& other) const
    {
        return hash == other.hash && width == other.width && text == other.text && *runs == *other.runs;
    }
};

size_t qHash(const Key& key)
{
    return key.hash;
}

/// The layouts of texts that were asked for recently.
class Cache
{
public:
    /// Null if there is none.
    std::shared_ptr<const TextLayout> find(const Key& key)
    {
        const auto* found = _layouts.object(key);
        return found != nullptr ? *found : nullptr;
    }

    /// There must be none with that key yet, which would stay and borrow from a layout that is gone.
    void add(const Key& key, const std::shared_ptr<const TextLayout>& layout)
    {
        _layouts.insert(key, new std::shared_ptr<const TextLayout>(layout),
                        key.text.size() + kLineCost * static_cast<qsizetype>(layout->lines().size()));
    }

private:
    static constexpr int kCapacity = 256 * 1024; // characters
    /// What a line of a layout costs beside its characters, in characters.
    static constexpr qsizetype kLineCost = 64;

    QCache<Key, std::shared_ptr<const TextLayout>> _layouts{kCapacity};
};

TextLayout::Run runOf(const NSAttributedString::Run& run)
{
    const NSFont* font = run.attributes[NSFontAttributeName];
    Ref<NSFont> defaultFont;
    if (font == nullptr) {
        defaultFont = NSFont::fontWithName_size("Arial", NSFont::kDefaultSize);
        font = defaultFont.get();
    }
    TextLayout::Run result{run.range, font->native().font, font->native().scale, NSTextAlignment::Natural};
    if (const NSParagraphStyle* style = run.attributes[NSParagraphStyleAttributeName]) {
        result.alignment = style->alignment();
    }
    return result;
}

/// The stretches of a text that are set alike, whatever their colours.
TextLayout::Runs runsOf(const NSAttributedString& text)
{
    TextLayout::Runs runs;
    for (const NSAttributedString::Run& run : text.runs()) {
        TextLayout::Run next = runOf(run);
        TextLayout::Run* last = runs.empty() ? nullptr : &runs.back();
        if (last != nullptr && last->font == next.font && last->scale == next.scale &&
            last->alignment == next.alignment) {
            last->range.length += next.range.length;
        } else {
            runs.push_back(std::move(next));
        }
    }
    return runs;
}

/// Fonts of several fractional sizes are set in sixteenths of a point, or what the largest allows, those of
/// one size as they are.
double commonScale(const TextLayout::Runs& runs)
{
    constexpr double kSixteenth = 1.0 / 16.0;
    constexpr double kLargestSize = 10000.0; // that text is set in
    const double first = runs.front().scale;
    double largest = 0.0;
    bool common = true;
    for (const TextLayout::Run& run : runs) {
        largest = std::max(largest, run.font.pixelSize() * run.scale);
        common = common && run.scale == first;
    }
    return common ? first : std::max(kSixteenth, largest / kLargestSize);
}

QFont fontInScale(const TextLayout::Run& run, double scale)
{
    QFont font = run.font;
    if (run.scale == scale) {
        return font; // still the same to Qt, which need not find it again
    }
    font.setPixelSize(static_cast<int>(std::lround(run.font.pixelSize() * run.scale / scale)));
    return font;
}

/// Valid as long as the string.
QString borrowed(const NSString& string)
{
    const std::u16string_view characters = string.characters();
    return QString::fromRawData(reinterpret_cast<const QChar*>(characters.data()),
                                static_cast<qsizetype>(characters.size()));
}

/// The length of the line end at `index`; 0 if there is none.
qsizetype lineEndAt(const QString& text, qsizetype index)
{
    const QChar character = text[index];
    if (character == QLatin1Char('\r') && index + 1 < text.size() && text[index + 1] == QLatin1Char('\n')) {
        return 2;
    }
    const bool ends = character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
                      character == QChar(QChar::ParagraphSeparator);
    return ends ? 1 : 0;
}

/// Whether there is a word that takes many lines: found out by measuring all of it for each of them, its
/// line breaks would take the square of its length.
bool hasEndlessWord(const QString& text)
{
    constexpr qsizetype kEndless = 4096;
    if (text.size() < kEndless) {
        return false;
    }
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
    for (qsizetype last = 0, next = breaks.toNextBoundary(); next >= 0; next = breaks.toNextBoundary()) {
        if (next - last >= kEndless) {
            return true;
        }
        last = next;
    }
    return false;
}

/// What comes of breaking lines.
struct Extent {
    double width = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
};

Extent breakLines(QTextLayout& layout, double width)
{
    Extent extent;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        extent.width = std::max(extent.width, line.naturalTextWidth());
        extent.ascent = std::max(extent.ascent, line.ascent());
        extent.descent = std::max(extent.descent, line.descent());
    }
    layout.endLayout();
    return extent;
}

void moveGlyphs(QGlyphRun& glyphs, QPointF way)
{
    if (way.isNull()) {
        return;
    }
    QList<QPointF> places = glyphs.positions();
    for (QPointF& place : places) {
        place += way;
    }
    glyphs.setPositions(places);
    glyphs.setBoundingRect(glyphs.boundingRect().translated(way));
}

std::uint64_t nextIdentifier()
{
    static std::uint64_t last = 0;
    return ++last;
}

const TextLayout::Run& runAt(const TextLayout::Runs& runs, std::size_t index)
{
    const auto behind = std::ranges::upper_bound(
        runs, index, {}, [](const TextLayout::Run& run) { return run.range.location; });
    return *(behind - 1);
}

} // namespace

std::shared_ptr<const TextLayout> TextLayout::of(const NSAttributedString& text, double width)
{
    const double usable = width > 0.0 ? std::min(width, kUnlimited) : 0.0;
    auto& cache = ofApplication<Cache>();
    const Ref<NSString> string = text.string();
    Runs runs = runsOf(text);
    const QStringView characters(string->characters());
    const size_t hash = qHashMulti(QHashSeed::globalSeed(), characters, runs.front().font.pixelSize());
    // What fits is the same as without a limit, in which most texts are measured before they are drawn.
    auto unlimited = cache.find({characters, &runs, kUnlimited, hash});
    if (unlimited != nullptr && unlimited->fits(usable)) {
        return unlimited;
    }
    if (auto limited = cache.find({characters, &runs, usable, hash})) {
        return limited;
    }
    auto layout = std::make_shared<const TextLayout>(string, std::move(runs), usable);
    const bool isUnlimited = unlimited == nullptr && layout->_isUnbroken && layout->_isFlushLeft;
    cache.add({layout->_text, &layout->_runs, isUnlimited ? kUnlimited : usable, hash}, layout);
    return layout;
}

TextLayout::TextLayout(Ref<NSString> text, Runs runs, double width)
    : _identifier(nextIdentifier()), _string(std::move(text)), _text(borrowed(*_string)),
      _runs(std::move(runs)), _width(width), _scale(commonScale(_runs))
{
    qsizetype start = 0;
    for (qsizetype index = 0; index < _text.size();) {
        const qsizetype lineEnd = lineEndAt(_text, index);
        if (lineEnd == 0) {
            ++index;
            continue;
        }
        addParagraph({static_cast<std::size_t>(start), static_cast<std::size_t>(index - start)},
                     static_cast<std::size_t>(lineEnd));
        start = index += lineEnd;
    }
    addParagraph({static_cast<std::size_t>(start), static_cast<std::size_t>(_text.size() - start)}, 0);
    align();
}

TextLayout::~TextLayout() = default;

std::unique_ptr<QTextLayout> TextLayout::newShaper(NSRange characters) const
{
    const Run& first = runAt(_runs, characters.location);
    auto shaper = std::make_unique<QTextLayout>(
        _text.mid(static_cast<qsizetype>(characters.location), static_cast<qsizetype>(characters.length)),
        fontInScale(first, _scale));
    if (!isInOneRun(characters)) {
        const Run* last = &runAt(_runs, NSMaxRange(characters) - 1);
        QList<QTextLayout::FormatRange> formats;
        for (const Run* run = &first; run <= last; ++run) {
            const NSRange part = NSIntersectionRange(run->range, characters);
            QTextLayout::FormatRange format;
            format.start = static_cast<int>(part.location - characters.location);
            format.length = static_cast<int>(part.length);
            format.format.setFont(fontInScale(*run, _scale));
            formats.append(format);
        }
        shaper->setFormats(formats);
    }
    QTextOption option;
    option.setWrapMode(hasEndlessWord(shaper->text()) ? QTextOption::WrapAnywhere
                                                      : QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(kTabInterval / _scale);
    shaper->setTextOption(option);
    shaper->setCacheEnabled(true);
    return shaper;
}

QTextLayout& TextLayout::shaperOf(const Paragraph& paragraph) const
{
    if (paragraph.shaper == nullptr) {
        const int lineCount = lineCountOf(paragraph);
        paragraph.shaper = newShaper(paragraph.characters);
        QTextLayout& shaper = *paragraph.shaper;
        breakLines(shaper, lineCount == 1 ? kLongestLine : _width / _scale);
        // With other fonts now than when the text was laid out, there may be another number of lines.
        for (int index = 0; index < std::min(lineCount, shaper.lineCount()); ++index) {
            shaper.lineAt(index).setPosition(placeOf(_lines[paragraph.firstLine + index]));
        }
    }
    return *paragraph.shaper;
}

int TextLayout::lineCountOf(const Paragraph& paragraph) const
{
    const Paragraph* next = &paragraph + 1;
    const qsizetype behind = next == _paragraphs.end() ? _lines.size() : next->firstLine;
    return static_cast<int>(behind - paragraph.firstLine);
}

QPointF TextLayout::placeOf(const Line& line) const
{
    constexpr double kUnits = 64.0; // of the shaper, which cuts off fractions
    return QPointF(std::trunc(line.left / _scale * kUnits), std::round(line.top / _scale * kUnits)) / kUnits;
}

bool TextLayout::isInOneRun(NSRange characters) const
{
    return NSMaxRange(characters) <= NSMaxRange(runAt(_runs, characters.location).range);
}

void TextLayout::addLine(NSRange characters, double ascent, double descent, double width)
{
    _lines.push_back({characters,
                      _size.height,
                      (ascent + descent) * _scale,
                      _size.height + ascent * _scale,
                      0.0,
                      width * _scale,
                      {}});
    _size.width = std::max(_size.width, _lines.back().width);
    _size.height = _lines.back().bottom();
}

void TextLayout::addPlainLines(const PairShaper::Lines& lines, NSRange characters, std::size_t lineEnd)
{
    _paragraphs.emplace_back(Paragraph{characters, _lines.size(), nullptr});
    for (const PairShaper::Line& line : lines) {
        const bool last = &line == &lines.back();
        const auto length = static_cast<std::size_t>(line.length);
        addLine({characters.location, length + (last ? lineEnd : 0)}, line.ascent, line.descent, line.width);
        _lines.back().glyphs.append(line.glyphs);
        characters.location += length;
    }
}

void TextLayout::addParagraph(NSRange characters, std::size_t lineEnd)
{
    const Run& run = runAt(_runs, characters.location);
    const bool oneRun = isInOneRun(characters);
    const std::optional<PairShaper::Text> plain =
        oneRun ? PairShaper::textOf(QStringView(_text).sliced(static_cast<qsizetype>(characters.location),
                                                              static_cast<qsizetype>(characters.length)),
                                    fontInScale(run, _scale))
               : std::nullopt;
    if (plain) {
        const bool fits = plain->width() * _scale <= _width + kRounding;
        const bool justified = run.alignment == NSTextAlignment::Justified;
        const PairShaper::Lines lines = fits         ? PairShaper::Lines{plain->line()}
                                        : !justified ? plain->linesOfWidth(_width / _scale)
                                                     : PairShaper::Lines();
        if (!lines.empty()) {
            addPlainLines(lines, characters, lineEnd);
            _isUnbroken = _isUnbroken && fits;
            return;
        }
    }

    Paragraph& paragraph = _paragraphs.emplace_back(Paragraph{characters, _lines.size(), nullptr});
    paragraph.shaper = newShaper(characters);
    QTextLayout& shaper = *paragraph.shaper;
    // Unbroken first: a width that was measured for the text must not break it by a rounding. It also
    // tells how high the fonts are that stand in for characters which the font lacks. With that height
    // for all lines of a paragraph in one font, a wider paragraph is never higher. Of plain text all that is
    // known.
    Extent extent;
    if (plain) {
        const PairShaper::Line line = plain->line();
        extent = {line.width, line.ascent, line.descent};
    } else {
        extent = breakLines(shaper, kLongestLine);
    }
    if (extent.width * _scale > _width + kRounding) {
        if (run.alignment == NSTextAlignment::Justified && !shaper.text().isRightToLeft()) {
            QTextOption option = shaper.textOption();
            option.setAlignment(Qt::AlignJustify);
            shaper.setTextOption(option);
        }
        const Extent broken = breakLines(shaper, _width / _scale);
        extent.ascent = std::max(extent.ascent, broken.ascent);
        extent.descent = std::max(extent.descent, broken.descent);
        _isUnbroken = false;
    }
    for (int index = 0; index < shaper.lineCount(); ++index) {
        QTextLine line = shaper.lineAt(index);
        const double ascent = oneRun ? extent.ascent : line.ascent();
        const double descent = oneRun ? extent.descent : line.descent();
        const bool last = index + 1 == shaper.lineCount();
        line.setPosition({0.0, _size.height / _scale + ascent - line.ascent()});
        addLine({characters.location + static_cast<std::size_t>(line.textStart()),
                 static_cast<std::size_t>(line.textLength()) + (last ? lineEnd : 0)},
                ascent, descent, line.naturalTextWidth());
    }
}

void TextLayout::align()
{
    const double room = _width >= kUnlimited ? _size.width : _width;
    for (const Paragraph& paragraph : _paragraphs) {
        QTextLayout* shaper = paragraph.shaper.get();
        const int lineCount = lineCountOf(paragraph);
        const bool justified = shaper != nullptr && shaper->textOption().alignment() == Qt::AlignJustify;
        const bool rightToLeft = shaper != nullptr && shaper->text().isRightToLeft();
        const NSTextAlignment alignment = runAt(_runs, paragraph.characters.location).alignment;
        _isFlushLeft = _isFlushLeft && alignment != NSTextAlignment::Right &&
                       alignment != NSTextAlignment::Center &&
                       (alignment == NSTextAlignment::Left || !rightToLeft);
        for (int index = 0; index < lineCount; ++index) {
            Line& line = _lines[paragraph.firstLine + index];
            const double free = std::max(0.0, room - line.width);
            switch (alignment) {
            case NSTextAlignment::Left:
                break;
            case NSTextAlignment::Right:
                line.left = free;
                break;
            case NSTextAlignment::Center:
                line.left = free / 2.0;
                break;
            case NSTextAlignment::Justified:
            case NSTextAlignment::Natural:
                line.left = rightToLeft ? free : 0.0;
                break;
            }
            if (shaper == nullptr) {
                moveGlyphs(line.glyphs.front(), placeOf(line));
                continue;
            }
            QTextLine shaped = shaper->lineAt(index);
            const int end = shaped.textStart() + shaped.textLength();
            const bool wrapped =
                index + 1 < lineCount && shaper->text()[end - 1] != QChar(QChar::LineSeparator);
            if (justified && wrapped) { // the shaper has put the words in their places
                line.width = room;
            }
            shaped.setPosition({line.left / _scale, shaped.y()});
            line.glyphs = shaped.glyphRuns();
        }
    }
}

const TextLayout::Line& TextLayout::lineOfCharacter(std::size_t index) const
{
    const auto behind = std::ranges::upper_bound(_lines, index, {},
                                                 [](const Line& line) { return line.characters.location; });
    return *(behind - 1);
}

const TextLayout::Paragraph& TextLayout::paragraphOf(const Line& line) const
{
    const qsizetype index = &line - _lines.data();
    return *(std::ranges::upper_bound(_paragraphs, index, {}, &Paragraph::firstLine) - 1);
}

QTextLine TextLayout::lineInParagraph(const Line& line) const
{
    const Paragraph& paragraph = paragraphOf(line);
    const qsizetype index = &line - _lines.data() - paragraph.firstLine;
    const QTextLayout& shaper = shaperOf(paragraph);
    return shaper.lineAt(std::min(static_cast<int>(index), shaper.lineCount() - 1));
}

QList<QGlyphRun> TextLayout::glyphsOf(const Line& line, NSRange characters) const
{
    const NSRange text = paragraphOf(line).characters;
    const NSRange shown = NSIntersectionRange(NSIntersectionRange(characters, line.characters), text);
    if (shown.length == 0) {
        return {};
    }
    const bool whole = shown == NSIntersectionRange(line.characters, text);
    return whole ? line.glyphs
                 : lineInParagraph(line).glyphRuns(static_cast<int>(shown.location - text.location),
                                                   static_cast<int>(shown.length));
}

NSRange TextLayout::wholeCharacters(NSRange characters) const
{
    const auto edge = [&](std::size_t index, bool forward) {
        const Paragraph& paragraph = paragraphOf(lineOfCharacter(index));
        const std::size_t last = paragraph.characters.length;
        std::size_t place = index - paragraph.characters.location;
        if (place > last) { // within a line end
            const Line& line = lineOfCharacter(index);
            return forward ? NSMaxRange(line.characters) : NSMaxRange(paragraph.characters);
        }
        while (place > 0 && place < last &&
               !shaperOf(paragraph).isValidCursorPosition(static_cast<int>(place))) {
            place = forward ? place + 1 : place - 1;
        }
        return paragraph.characters.location + place;
    };
    const std::size_t length = NSMaxRange(_lines.back().characters);
    const std::size_t from = edge(std::min(characters.location, length), false);
    const std::size_t to = edge(std::min(NSMaxRange(characters), length), true);
    return {from, characters.length == 0 ? 0 : to - from};
}

std::vector<NSRect> TextLayout::rectsOnLine(const Line& line, NSRange characters) const
{
    std::vector<NSRect> pieces;
    const auto add = [&](double from, double to) {
        pieces.push_back(
            NSMakeRect(std::min(from, to) * _scale, line.top, std::abs(to - from) * _scale, line.height));
    };
    for (const QGlyphRun& glyphs : glyphsOf(line, characters)) {
        const QRectF bounds = glyphs.boundingRect();
        add(bounds.left(), bounds.right());
    }
    // Tabs have no glyph, but their room.
    const Paragraph& paragraph = paragraphOf(line);
    const NSRange shown =
        NSIntersectionRange(NSIntersectionRange(characters, line.characters), paragraph.characters);
    for (std::size_t index = shown.location; index < NSMaxRange(shown); ++index) {
        if (_text[static_cast<qsizetype>(index)] == QLatin1Char('\t')) {
            const auto place = static_cast<int>(index - paragraph.characters.location);
            const QTextLine shaped = lineInParagraph(line);
            add(shaped.cursorToX(place), shaped.cursorToX(place + 1));
        }
    }
    std::ranges::sort(pieces, {}, [](const NSRect& rect) { return rect.origin.x; });
    std::vector<NSRect> rects;
    for (const NSRect& piece : pieces) {
        const bool touches =
            !rects.empty() && rects.back().origin.x + rects.back().size.width >= piece.origin.x - kRounding;
        if (touches) {
            rects.back() = NSUnionRect(rects.back(), piece);
        } else if (!NSIsEmptyRect(piece)) {
            rects.push_back(piece);
        }
    }
    return rects;
}

std::vector<NSRect> TextLayout::rectsOf(NSRange characters) const
{
    const NSRange whole = wholeCharacters(characters);
    std::vector<NSRect> rects;
    for (const Line* line = &lineOfCharacter(whole.location);
         line != _lines.data() + _lines.size() && line->characters.location < NSMaxRange(whole); ++line) {
        const std::vector<NSRect> onLine = rectsOnLine(*line, whole);
        rects.insert(rects.end(), onLine.begin(), onLine.end());
    }
    return rects;
}

NSRect TextLayout::inkRect() const
{
    QRectF ink;
    for (const Line& line : _lines) {
        for (const QGlyphRun& run : line.glyphs) {
            const QRawFont font = run.rawFont();
            const QList<QPointF> places = run.positions();
            for (qsizetype index = 0; const quint32 glyph : run.glyphIndexes()) {
                ink |= font.boundingRect(glyph).translated(places[index++]);
            }
        }
    }
    return fromQt(QRectF(ink.topLeft() * _scale, ink.size() * _scale));
}

std::size_t TextLayout::characterAt(NSPoint point, std::size_t lineCount) const
{
    const auto lines = std::span(_lines).first(lineCount);
    const auto below =
        std::ranges::partition_point(lines, [&](const Line& each) { return each.bottom() <= point.y; });
    const Line& line = below == lines.end() ? lines.back() : *below;
    const Paragraph& paragraph = paragraphOf(line);
    const NSRange shown = NSIntersectionRange(line.characters, paragraph.characters);
    if (shown.length == 0) {
        return line.characters.location;
    }
    const double x = std::isnan(point.x) ? 0.0 : std::clamp(point.x, -kUnlimited, kUnlimited);
    const int place = lineInParagraph(line).xToCursor(x / _scale, QTextLine::CursorOnCharacter);
    const std::size_t found = paragraph.characters.location + static_cast<std::size_t>(place);
    // Within ligatures of text from right to left, the shaper counts its cursors from the wrong end.
    for (const std::size_t index : {found, found - 1, found + 1}) {
        for (const NSRect& rect : rectsOnLine(line, wholeCharacters({index, 1}))) {
            if (index < NSMaxRange(shown) && x >= rect.origin.x && x < rect.origin.x + rect.size.width) {
                return index;
            }
        }
    }
    return std::clamp(found, shown.location, wholeCharacters({NSMaxRange(shown) - 1, 1}).location);
}

void TextLayout::underline(QPainter& painter, QPointF origin, const Line& line, NSRange characters) const
{
    const QList<QGlyphRun> glyphs = glyphsOf(line, characters);
    if (glyphs.isEmpty()) {
        return;
    }
    // In whole pixels, or it would look blurred; at least one of them.
    const QRawFont font = glyphs.first().rawFont();
    const double pixel = 1.0 / std::abs(painter.deviceTransform().m22());
    const double thickness = std::max(font.lineThickness() * _scale, pixel);
    const double top = line.baseline + font.underlinePosition() * _scale - thickness / 2.0;
    const bool smooth = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const NSRect& rect : rectsOnLine(line, characters)) {
        painter.fillRect(QRectF(rect.origin.x, top, rect.size.width, thickness).translated(origin),
                         painter.pen().color());
    }
    painter.setRenderHint(QPainter::Antialiasing, smooth);
}

void TextLayout::draw(QPainter& painter, QPointF origin, const NSAttributedString& text,
                      NSRange characters) const
{
    const NSRange all{0, text.length()};
    const NSRange whole = characters == all ? all : wholeCharacters(characters);
    auto run = text.runs().begin();
    for (const Line& line : _lines) {
        const NSRange drawn = NSIntersectionRange(line.characters, whole);
        for (std::size_t place = drawn.location; place < NSMaxRange(drawn);) {
            while (NSMaxRange(run->range) <= place) {
                ++run;
            }
            const NSRange part = NSIntersectionRange(run->range, {place, NSMaxRange(drawn) - place});
            const NSColor* color = run->attributes[NSForegroundColorAttributeName];
            const NSNumber* style = run->attributes[NSUnderlineStyleAttributeName];
            painter.setPen(color == nullptr ? QColor(Qt::black) : toQt(*color));
            drawGlyphs(painter, origin, glyphsOf(line, part));
            if (style != nullptr && style->integerValue() != NSUnderlineStyleNone) {
                underline(painter, origin, line, part);
            }
            place = NSMaxRange(part);
        }
    }
}

void TextLayout::drawGlyphs(QPainter& painter, QPointF origin, const QList<QGlyphRun>& runs) const
{
    const bool scaled = _scale != 1.0;
    if (scaled) {
        painter.save();
        painter.translate(origin);
        painter.scale(_scale, _scale);
    }
    for (const QGlyphRun& glyphs : runs) {
        painter.drawGlyphRun(scaled ? QPointF() : origin, glyphs);
    }
    if (scaled) {
        painter.restore();
    }
}
