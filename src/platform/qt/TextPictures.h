#pragma once

// Pictures of texts. Private to the platform layer.

#include <QPointF>

class NSAttributedString;
class QPainter;
class TextLayout;

/// Draws a whole text, which `layout` is the layout of, as `TextLayout::draw` does. Drawn again at the same
/// fraction of a pixel it comes from a picture, which takes a fraction of the time and differs by no more
/// than the rounding of colours. Pictures are of small texts in one style, for what has pixels; all that are
/// kept take as much memory as a large screen does.
void drawText(QPainter& painter, QPointF origin, const TextLayout& layout, const NSAttributedString& text);
