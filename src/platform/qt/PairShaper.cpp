#include "platform/qt/PairShaper.h"

#include "platform/qt/ContextualGlyphs.h"
#include "platform/qt/OfApplication.h"

#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

constexpr double kUnits = 64.0;          // of the shaper, to the font's
constexpr qsizetype kLongestText = 1024; // fits on a line of the shaper in every size
constexpr double kLongestLine = 1 << 20;

/// A character to stand beside those that are learnt, so that the text is of its script.
QChar filler(bool letters)
{
    return letters ? u'x' : u'0';
}

int unitsOf(double length)
{
    return static_cast<int>(std::lround(length * kUnits));
}

/// What is known of the fonts that were used last.
class PairShapers
{
public:
    PairShapers()
    {
        QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, &_context,
                         [this] { _shapers.clear(); });
    }

    PairShaper& shaperFor(const QFont& font, bool letters)
    {
        const auto found =
            std::ranges::find_if(_shapers, [&](const auto& each) { return each->isFor(font, letters); });
        if (found != _shapers.end()) {
            std::rotate(_shapers.begin(), found, found + 1);
            return *_shapers.front();
        }
        if (_shapers.size() == kCapacity) {
            _shapers.pop_back();
        }
        return **_shapers.insert(_shapers.begin(), std::make_unique<PairShaper>(font, letters));
    }

private:
    static constexpr std::size_t kCapacity = 32;

    QObject _context;
    std::vector<std::unique_ptr<PairShaper>> _shapers; // the last used first
};

} // namespace

std::optional<PairShaper::Line> PairShaper::lineOf(QStringView text, const QFont& font)
{
    static const auto kIsLetter = [] {
        std::array<bool, kCharacters> isLetter{};
        for (std::size_t index = 0; index < kCharacters; ++index) {
            isLetter[index] = QChar::script(static_cast<char32_t>(kFirst + index)) == QChar::Script_Latin;
        }
        return isLetter;
    }();
    if (text.isEmpty() || text.size() > kLongestText) {
        return std::nullopt;
    }
    bool letters = false;
    for (const QChar character : text) {
        if (character < kFirst || character > kLast) {
            return std::nullopt;
        }
        letters = letters || kIsLetter[indexOf(character)];
    }
    return ofApplication<PairShapers>().shaperFor(font, letters).line(text);
}

PairShaper::PairShaper(const QFont& font, bool letters)
    : _font(font), _letters(letters), _model(shape(filler(letters)))
{
    const QRawFont rawFont = _model.glyphs.rawFont();
    const std::vector<bool> contextual = contextualGlyphs(rawFont);
    for (std::size_t index = 0; index < kCharacters; ++index) {
        const QChar character(static_cast<char16_t>(kFirst + index));
        const quint32 glyph = rawFont.glyphIndexesForString(character).value(0);
        _glyphs[index] = contextual[glyph] ? 0 : glyph;
    }
}

std::optional<PairShaper::Line> PairShaper::line(QStringView text)
{
    QList<quint32> glyphs(text.size());
    QList<QPointF> places(text.size());
    quint32* glyph = glyphs.data();
    QPointF* place = places.data();
    int x = 0;
    Ways* last = nullptr;
    for (const QChar character : text) {
        const std::size_t index = indexOf(character);
        if (last != nullptr) {
            const int way = last->to[index] == kUnknown ? learnWay(*last, character) : last->to[index];
            if (way == kNotPlain) {
                return std::nullopt;
            }
            x += way;
        }
        *glyph++ = _glyphs[index];
        *place++ = {x / kUnits, _model.ascent};
        if (_ways[index] == nullptr) {
            _ways[index] = newWays(character);
        }
        last = _ways[index].get();
    }
    if (last->toEnd == kNotPlain) {
        return std::nullopt;
    }
    Line line = _model;
    line.width = (x + last->toNaturalEnd) / kUnits;
    QRectF bounds = line.glyphs.boundingRect();
    bounds.setWidth((x + last->toEnd) / kUnits);
    line.glyphs.setBoundingRect(bounds);
    line.glyphs.setGlyphIndexes(glyphs);
    line.glyphs.setPositions(places);
    return line;
}

std::unique_ptr<PairShaper::Ways> PairShaper::newWays(QChar from) const
{
    const QString text = QString(filler(_letters)) + from;
    const Line line = shape(text); // a space has no glyph at the end, and so is not plain there
    const bool plain = isPlain(text, line.glyphs);
    const double start = plain ? line.glyphs.positions()[1].x() : 0.0;
    auto ways = std::make_unique<Ways>();
    ways->from = from;
    ways->toEnd = plain ? unitsOf(line.glyphs.boundingRect().right() - start) : kNotPlain;
    ways->toNaturalEnd = unitsOf(line.width - start);
    ways->to.fill(kUnknown);
    return ways;
}

int PairShaper::learnWay(Ways& ways, QChar to) const
{
    const QString text = QString(ways.from) + to + filler(_letters);
    const QGlyphRun glyphs = shape(text).glyphs;
    const int way = isPlain(text, glyphs) ? unitsOf(glyphs.positions()[1].x()) : kNotPlain;
    ways.to[indexOf(to)] = way;
    return way;
}

PairShaper::Line PairShaper::shape(const QString& text) const
{
    QTextLayout layout(text, _font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(kLongestLine);
    layout.endLayout();
    return {line.glyphRuns().value(0), line.naturalTextWidth(), line.ascent(), line.descent()};
}

bool PairShaper::isPlain(const QString& text, const QGlyphRun& glyphs) const
{
    const QList<quint32> indexes = glyphs.glyphIndexes();
    const QList<QPointF> places = glyphs.positions();
    bool plain = indexes.size() == text.size() && glyphs.rawFont() == _model.glyphs.rawFont() &&
                 places.front().x() == 0.0;
    for (qsizetype index = 0; plain && index < text.size(); ++index) {
        const quint32 known = _glyphs[indexOf(text[index])];
        plain = known != 0 && indexes[index] == known && places[index].y() == _model.ascent;
    }
    return plain;
}
