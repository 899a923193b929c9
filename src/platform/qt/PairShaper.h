#pragma once

// Lines of plain text. Private to the platform layer.

#include <QFont>
#include <QGlyphRun>
#include <QString>

#include <array>
#include <memory>
#include <optional>

/// Sets lines of plain Western text in one font, exactly as the shaper does but many times faster, by what it
/// has learnt from the shaper: of each character its glyph, and of each two neighbours the way from one to
/// the other. User-interface thread only.
class PairShaper
{
public:
    /// In units of the font.
    struct Line {
        QGlyphRun glyphs; // of a line that begins at 0, 0
        double width;     // the shaper's natural one
        double ascent;
        double descent;
    };

    /// A text without line ends, on one line. Nothing where only the shaper can tell: if the text is empty or
    /// long, ends with a space, or has characters that are not plain: those beyond U+00FF, those that the
    /// font lacks, and those that it sets by more than their neighbours, or together with these.
    static std::optional<Line> lineOf(QStringView text, const QFont& font);

    /// For texts in `font` that have letters in them, or for those that have none: to the shaper they are in
    /// different scripts.
    PairShaper(const QFont& font, bool letters);

    bool isFor(const QFont& font, bool letters) const { return _letters == letters && _font == font; }

private:
    static constexpr char16_t kFirst = u' ';
    static constexpr char16_t kLast = u'\xFF';
    static constexpr std::size_t kCharacters = kLast - kFirst + 1;

    /// From a character on, in the shaper's units.
    struct Ways {
        QChar from;
        int toEnd;                       // of the glyphs
        int toNaturalEnd;                // of the line
        std::array<int, kCharacters> to; // each learnt when it is first needed
    };
    static constexpr int kUnknown = -(1 << 30);
    static constexpr int kNotPlain = kUnknown + 1;

    static std::size_t indexOf(QChar character) { return character.unicode() - kFirst; }

    std::optional<Line> line(QStringView text);
    std::unique_ptr<Ways> newWays(QChar from) const;
    int learnWay(Ways& ways, QChar to) const;
    /// A text as the shaper sets it on one line. If that takes several fonts, the glyphs of the first.
    Line shape(const QString& text) const;
    /// Whether the shaper sets a text with the known glyphs, one after the other.
    bool isPlain(const QString& text, const QGlyphRun& glyphs) const;

    QFont _font;
    bool _letters;
    Line _model;                                          // of one character
    std::array<quint32, kCharacters> _glyphs{};           // 0: not plain
    std::array<std::unique_ptr<Ways>, kCharacters> _ways; // made when first needed
};
