#pragma once

// Shaped text. Private to the platform layer.

#include "platform/foundation/NSGeometry.h"

#include <QTextLayout>

#include <memory>
#include <vector>

class NSAttributes;
class NSString;
class QPainter;

/// A text shaped in one font and broken into lines of a width; measuring and drawing both read it. User
/// interface thread only.
class TextLayout
{
public:
    /// The width that breaks no line.
    static constexpr double kUnlimited = -1.0;

    /// The layout of `text` in the font of `attributes`. Recent layouts are kept, so that a redraw does
    /// not shape again.
    static std::shared_ptr<const TextLayout> of(const NSString& text, const NSAttributes& attributes,
                                                double width);

    /// Sets `text` in `font`, enlarged by `scale`; the width is that after scaling.
    TextLayout(const QString& text, const QFont& font, double scale, double width);

    /// Widest line by the sum of the line heights, none of them rounded.
    NSSize size() const { return _size; }

    /// Draws in the painter's pen colour, from the top-left corner `origin`, y downwards.
    void draw(QPainter& painter, QPointF origin) const;

private:
    std::vector<std::unique_ptr<QTextLayout>> _paragraphs;
    double _scale;
    NSSize _size;
};
