#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

class NSAttributedString;
class NSBezierPath;
class NSBitmapImageRep;
class NSColor;
class NSImage;
class NSLayoutManager;
struct NSRange;
enum class NSCompositingOperation;

/// Where drawing goes: every drawing operation of the layer ends in one of these functions, in the
/// coordinates of the view that draws. One implementation paints, another records. Colours are black
/// until set. Used on the user-interface thread only.
class TESSALINE_EXPORT NSGraphicsContext : public NSObject
{
public:
    /// The context that drawing goes to at the moment, borrowed; null outside of drawing, and then
    /// nothing is drawn.
    static NSGraphicsContext* currentContext();

    /// Makes a context current as long as it lives, then the one before again.
    class TESSALINE_EXPORT Scope
    {
    public:
        explicit Scope(NSGraphicsContext& context);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        Ref<NSGraphicsContext> _previous;
    };

    /// Whether y grows downwards.
    virtual bool isFlipped() const = 0;
    /// How many pixels of the device make a point.
    virtual double scale() const = 0;

    /// Keep and bring back the colours. Each save has its restore.
    virtual void saveGraphicsState() = 0;
    virtual void restoreGraphicsState() = 0;

    virtual void setFillColor(const NSColor& color) = 0;
    virtual void setStrokeColor(const NSColor& color) = 0;
    virtual void fillRect(NSRect rect) = 0;
    /// Fills with the fill colour as it is, alpha included, whatever was there before.
    virtual void replaceRect(NSRect rect) = 0;
    virtual void strokeRect(NSRect rect, double lineWidth) = 0;
    virtual void fillPath(const NSBezierPath& path) = 0;
    virtual void strokePath(const NSBezierPath& path) = 0;
    /// Fills a rectangle with area as `NSGradient` does; the angle is finite.
    virtual void drawGradient(const NSColor& starting, const NSColor& ending, NSRect rect, double angle) = 0;
    virtual void drawImage(const NSImage& image, NSRect rect, NSRect fromRect,
                           NSCompositingOperation operation, double fraction, bool respectFlipped) = 0;
    /// Draws the whole bitmap upright into `rect`.
    virtual void drawBitmap(const NSBitmapImageRep& bitmap, NSRect rect) = 0;
    virtual void drawText(const NSAttributedString& text, NSRect rect) = 0;
    virtual void drawTextAtPoint(const NSAttributedString& text, NSPoint point) = 0;
    virtual void drawGlyphs(const NSLayoutManager& layout, NSRange glyphs, NSPoint origin) = 0;
};
