#pragma once

// Drawing through Qt. Private to the platform layer.

#include "platform/graphics/NSGraphicsContext.h"

#include <QColor>

#include <vector>

class QPainter;

/// Paints what is drawn with a painter, which is borrowed and must outlive the context's use. The
/// painter's coordinates are those of a widget: its origin top-left, y downwards.
class PainterGraphicsContext final : public NSGraphicsContext
{
public:
    /// `height` is the height of the drawing view; unless `flipped`, y is counted upwards from there.
    PainterGraphicsContext(QPainter& painter, bool flipped, double height);

    bool isFlipped() const override { return _flipped; }
    double scale() const override;
    void saveGraphicsState() override;
    void restoreGraphicsState() override;
    void setFillColor(const NSColor& color) override;
    void setStrokeColor(const NSColor& color) override;
    void fillRect(NSRect rect) override;
    void replaceRect(NSRect rect) override;
    void strokeRect(NSRect rect, double lineWidth) override;
    void fillPath(const NSBezierPath& path) override;
    void strokePath(const NSBezierPath& path) override;
    void drawGradient(const NSColor& starting, const NSColor& ending, NSRect rect, double angle) override;
    void drawImage(const NSImage& image, NSRect rect, NSRect fromRect, NSCompositingOperation operation,
                   double fraction, bool respectFlipped) override;
    void drawBitmap(const NSBitmapImageRep& bitmap, NSRect rect) override;
    void drawText(const NSAttributedString& text, NSRect rect) override;
    void drawTextAtPoint(const NSAttributedString& text, NSPoint point) override;
    void drawGlyphs(const NSLayoutManager& layout, NSRange glyphs, NSPoint origin) override;

private:
    struct State {
        QColor fill = Qt::black;
        QColor stroke = Qt::black;
    };

    void strokePath(const NSBezierPath& path, double lineWidth);

    State& state() { return _states.back(); }

    QPainter& _painter;
    bool _flipped;
    std::vector<State> _states{State{}};
};
