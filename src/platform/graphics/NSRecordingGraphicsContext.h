#pragma once

#include "platform/graphics/NSGraphicsContext.h"

#include <string>
#include <vector>

/// Writes down what is drawn, one line an operation, in order and in the coordinates of the caller.
/// Numbers appear with the digits that name them exactly, so equal lines mean equal doubles:
///
///     strokeColor sRGB(0, 0, 1, 1)
///     strokeRect {{0, 0}, {200, 60}} width 1
///     replaceRect {{1, 1}, {49.5, 8}}
///     strokePath move {0, 0} line {100, 0} width 2 dash 3, 1 phase 0
///     drawGradient white(1, 1) to deviceWhite(0.9, 1) {{0, 0}, {100, 22}} angle 90
///     drawImage "icon" {{4, 14.5}, {32, 32}} from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped
///     drawText "Messages" {{54, 10}, {70.25, 16.1}} font "Arial Bold" 14 color white(0, 1)
///     drawText "7" at {126, 43} font "Arial" 12 color white(0, 1)
///     drawGlyphs {0, 5} "Hello" at {4, 10} container {80, 1000} padding 5 font "Arial" 12 alignment 2
///
/// A text of several stretches shows each with its attributes: "Hello" [{0, 2} underline 1] [{2, 3}].
class TESSALINE_EXPORT NSRecordingGraphicsContext final : public NSGraphicsContext
{
public:
    explicit NSRecordingGraphicsContext(bool flipped) : _flipped(flipped) {}

    const std::vector<std::string>& operations() const { return _operations; }

    bool isFlipped() const override { return _flipped; }
    double scale() const override { return 1.0; }
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
    bool _flipped;
    std::vector<std::string> _operations;
};
