#pragma once

// Shaped text. Private to the platform layer.

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSRange.h"
#include "platform/foundation/Ref.h"
#include "platform/qt/PairShaper.h"

#include <QFont>
#include <QGlyphRun>
#include <QTextLayout>
#include <QVarLengthArray>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class NSAttributedString;
class NSString;
class QPainter;
enum class NSTextAlignment : long;

/// A text shaped in its fonts, broken into lines of a width and aligned in it; measuring and drawing both
/// read it. Places are in points from the layout's top-left corner, y downwards. Colours and underlines
/// are no part of it. User-interface thread only.
class TextLayout
{
public:
    /// Widths from here on break no line.
    static constexpr double kUnlimited = 1 << 23;

    struct Line {
        NSRange characters; // with the line end
        double top;
        double height;
        double baseline;
        double left; // of what it shows, and its width without spaces where it is wrapped
        double width;
        QList<QGlyphRun> glyphs; // in the shaper's units

        double bottom() const { return top + height; }
    };

    /// The layout of `text`, whose widths below 0, and NaN, count as 0. Recent layouts are kept, so that a
    /// redraw does not shape again.
    static std::shared_ptr<const TextLayout> of(const NSAttributedString& text, double width);

    /// What decides a layout besides the text and the width.
    struct Run {
        NSRange range;
        QFont font;   // of a whole size
        double scale; // from there to the size
        NSTextAlignment alignment;

        bool operator==(const Run&) const = default;
    };
    using Runs = QVarLengthArray<Run, 1>;

    TextLayout(Ref<NSString> text, Runs runs, double width);
    ~TextLayout();

    /// Widest line by the sum of the line heights, none of them rounded.
    NSSize size() const { return _size; }

    /// Another one for each layout, for as long as the program runs.
    std::uint64_t identifier() const { return _identifier; }

    /// Whether a layout without a limit is the same as one of this width.
    bool fits(double width) const { return _isFlushLeft && _size.width <= width; }

    /// At least one; an empty text has an empty line.
    std::span<const Line> lines() const { return _lines; }
    /// The line that a character is on; the last one for indexes behind the text.
    const Line& lineOfCharacter(std::size_t index) const;

    /// Widens a range to whole characters as they are shown.
    NSRange wholeCharacters(NSRange characters) const;
    std::vector<NSRect> rectsOf(NSRange characters) const;
    /// What the glyphs cover; some reach out of their lines.
    NSRect inkRect() const;
    /// The character at a point, or else the nearest on the nearest of the first `lineCount` lines, of
    /// which there is one at least.
    std::size_t characterAt(NSPoint point, std::size_t lineCount) const;

    /// Draws some characters of `text`, which this is the layout of, in its colours and with its underlines.
    /// `origin` is the place of the top-left corner in the painter's coordinates, y downwards. The painter's
    /// pen is another one afterwards.
    void draw(QPainter& painter, QPointF origin, const NSAttributedString& text, NSRange characters) const;

private:
    struct Paragraph {
        NSRange characters; // without the line end
        qsizetype firstLine;
        mutable std::unique_ptr<QTextLayout> shaper; // null where a plain text has not needed it yet
    };

    void addParagraph(NSRange characters, std::size_t lineEnd);
    void addPlainLines(const PairShaper::Lines& lines, NSRange characters, std::size_t lineEnd);
    void addLine(NSRange characters, double ascent, double descent, double width);
    void align();
    bool isInOneRun(NSRange characters) const;
    /// Of a paragraph, without its lines.
    std::unique_ptr<QTextLayout> newShaper(NSRange characters) const;
    QTextLayout& shaperOf(const Paragraph& paragraph) const;
    int lineCountOf(const Paragraph& paragraph) const;
    /// Of a plain line, in the shaper's units.
    QPointF placeOf(const Line& line) const;
    const Paragraph& paragraphOf(const Line& line) const;
    QTextLine lineInParagraph(const Line& line) const;
    /// The glyphs of those characters that are on the line, in the shaper's units.
    QList<QGlyphRun> glyphsOf(const Line& line, NSRange characters) const;
    std::vector<NSRect> rectsOnLine(const Line& line, NSRange characters) const;
    void drawGlyphs(QPainter& painter, QPointF origin, const QList<QGlyphRun>& runs) const;
    void underline(QPainter& painter, QPointF origin, const Line& line, NSRange characters) const;

    std::uint64_t _identifier;
    Ref<NSString> _string;
    QString _text; // borrowed from it
    Runs _runs;
    QVarLengthArray<Paragraph, 1> _paragraphs;
    QVarLengthArray<Line, 1> _lines;
    double _width;
    double _scale; // from the shaper's units to points
    NSSize _size;
    bool _isFlushLeft = true; // in every width
    bool _isUnbroken = true;  // by the width
};
