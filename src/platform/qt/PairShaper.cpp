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
constexpr QChar kSpace = u' ';

/// A character to stand beside those that are learnt, so that the text is of its script.
QChar filler(bool letters)
{
    return letters ? u'x' : u'0';
}

/// Of characters up to U+00FF.
bool isLetter(QChar character)
{
    static const auto kIsLetter = [] {
        std::array<bool, 0x100> isLetter{};
        for (std::size_t index = 0; index < isLetter.size(); ++index) {
            isLetter[index] = QChar::script(static_cast<char32_t>(index)) == QChar::Script_Latin;
        }
        return isLetter;
    }();
    return kIsLetter[character.unicode()];
}

/// Whether there is no place for a line break within a word without spaces. Says no of all but what is usual
/// in words.
bool isUnbreakable(QStringView word)
{
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    const auto isOneOf = [](QStringView characters, QChar character) {
        return characters.contains(character);
    };
    for (qsizetype index = 1; index < word.size(); ++index) {
        const QChar before = word[index - 1];
        const QChar after = word[index];
        const bool behindWord = isLetter(before) || isDigit(before);
        bool whole = isOneOf(u"'\"([", before);
        if (isLetter(after)) {
            whole = whole || behindWord || isOneOf(u".,:;", before);
        } else if (isDigit(after)) { // numbers go on behind a separator, but do not begin there
            const bool inNumber = index > 1 && isDigit(word[index - 2]) && isOneOf(u".,:", before);
            whole = whole || behindWord || inNumber;
        } else {
            whole = whole || isOneOf(u".,:;!?'\")]", after) || (behindWord && isOneOf(u"([", after));
        }
        if (!whole) {
            return false;
        }
    }
    return !word.isEmpty();
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

std::optional<PairShaper::Text> PairShaper::textOf(QStringView text, const QFont& font)
{
    if (text.isEmpty() || text.size() > kLongestText) {
        return std::nullopt;
    }
    bool letters = false;
    for (const QChar character : text) {
        if (character < kFirst || character > kLast) {
            return std::nullopt;
        }
        letters = letters || isLetter(character);
    }
    return ofApplication<PairShapers>().shaperFor(font, letters).text(text);
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

std::optional<PairShaper::Text> PairShaper::text(QStringView text)
{
    Text result(*this, text);
    result._places.reserve(text.size() + 1);
    int place = 0;
    Ways* last = nullptr;
    for (const QChar character : text) {
        const std::size_t index = indexOf(character);
        if (last != nullptr) {
            const int way = last->to[index] == kUnknown ? learnWay(*last, character) : last->to[index];
            if (way == kNotPlain) {
                return std::nullopt;
            }
            place += way;
        }
        result._places.append(place);
        if (_ways[index] == nullptr) {
            _ways[index] = newWays(character);
        }
        last = _ways[index].get();
    }
    if (last->toEnd == kNotPlain) {
        return std::nullopt;
    }
    result._places.append(place + last->toEnd);
    return result;
}

int PairShaper::overhangOf(QChar last) const
{
    const Ways& ways = *_ways[indexOf(last)];
    return ways.toNaturalEnd - ways.toEnd;
}

double PairShaper::Text::width() const
{
    return (_places.back() + _shaper.overhangOf(_text.back())) / kUnits;
}

PairShaper::Line PairShaper::Text::line() const
{
    return line(0, _text.size());
}

PairShaper::Line PairShaper::Text::line(qsizetype from, qsizetype to) const
{
    const bool last = to == _text.size();
    qsizetype end = to;
    while (!last && _text[end - 1] == kSpace) {
        --end;
    }
    QList<quint32> glyphs;
    QList<QPointF> places;
    glyphs.reserve(end - from);
    places.reserve(end - from);
    for (qsizetype index = from; index < end; ++index) {
        if (_text[index] != kSpace) {
            glyphs.append(_shaper._glyphs[indexOf(_text[index])]);
            places.append({(_places[index] - _places[from]) / kUnits, _shaper._model.ascent});
        }
    }
    Line line = _shaper._model;
    line.length = to - from;
    const int width = _places[end] - _places[from];
    // Before a space nothing hangs over.
    line.width = (width + (last ? _shaper.overhangOf(_text[end - 1]) : 0)) / kUnits;
    QRectF bounds = line.glyphs.boundingRect();
    bounds.setWidth(width / kUnits);
    line.glyphs.setBoundingRect(bounds);
    line.glyphs.setGlyphIndexes(glyphs);
    line.glyphs.setPositions(places);
    return line;
}

PairShaper::Lines PairShaper::Text::linesOfWidth(double width) const
{
    const int widest = static_cast<int>(std::min(width, kLongestLine) * kUnits); // cut off, as by the shaper
    if (_text.back() == kSpace) {
        return {};
    }
    Lines lines;
    qsizetype start = 0; // of the line
    for (qsizetype word = 0; word < _text.size();) {
        const qsizetype found = _text.indexOf(kSpace, word);
        const qsizetype end = found < 0 ? _text.size() : found;
        if (!isUnbreakable(_text.sliced(word, end - word))) {
            return {};
        }
        // Too wide with a last character that is not plain at an end, and so the shaper's.
        if (_places[end] - _places[start] + _shaper.overhangOf(_text[end - 1]) <= widest) {
            word = end;
            while (word < _text.size() && _text[word] == kSpace) {
                ++word;
            }
        } else if (start < word) {
            lines.push_back(line(start, word));
            start = word;
        } else {
            return {};
        }
    }
    lines.push_back(line(start, _text.size()));
    return lines;
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
    return {text.size(), line.glyphRuns().value(0), line.naturalTextWidth(), line.ascent(), line.descent()};
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
