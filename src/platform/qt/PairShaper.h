#pragma once

// Lines of plain text. Private to the platform layer.

#include <QFont>
#include <QGlyphRun>
#include <QString>
#include <QVarLengthArray>

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
        qsizetype length; // of the text that is on it, with the spaces behind
        QGlyphRun glyphs; // of a line that begins at 0, 0; spaces have none
        double width;     // the shaper's natural one
        double ascent;
        double descent;
    };

    using Lines = QVarLengthArray<Line, 2>;

    /// Where the characters of a text are on one line. Borrows the text and what is known of the font: for
    /// the call.
    class Text
    {
    public:
        double width() const; // of the line
        Line line() const;
        /// The lines that the shaper wraps it into. None where only the shaper can tell: if a word is wider
        /// or could be broken, and if there are spaces at an end.
        Lines linesOfWidth(double width) const;

    private:
        friend PairShaper;
        Text(const PairShaper& shaper, QStringView text) : _shaper(shaper), _text(text) {}

        /// From a word to before another one, or to the end of the text.
        Line line(qsizetype from, qsizetype to) const;

        const PairShaper& _shaper;
        QStringView _text;
        QVarLengthArray<int, 256> _places; // of the characters, and of the end
    };

    /// A text without line ends. Nothing where only the shaper can tell: if the text is empty or long, ends
    /// with a space, or has characters that are not plain: those beyond U+00FF, those that the font lacks,
    /// and those that it sets by more than their neighbours, or together with these.
    static std::optional<Text> textOf(QStringView text, const QFont& font);

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

    std::optional<Text> text(QStringView text);
    /// By how much the line is wider that ends with a glyph than the glyphs are.
    int overhangOf(QChar last) const;
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
