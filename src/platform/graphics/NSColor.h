#pragma once

#include "platform/foundation/NSObject.h"

#include <array>
#include <string>

/// An immutable colour with components and alpha in 0..1, kept as they were given.
class TESSALINE_EXPORT NSColor final : public NSObject
{
public:
    enum class Space { SRGB, CalibratedRGB, CalibratedWhite, DeviceWhite };

    static Ref<NSColor> colorWithSRGBRed_green_blue_alpha(double red, double green, double blue,
                                                          double alpha);
    /// Shown as sRGB: the same numbers mean the same pixels.
    static Ref<NSColor> colorWithCalibratedRed_green_blue_alpha(double red, double green, double blue,
                                                                double alpha);
    static Ref<NSColor> colorWithCalibratedWhite_alpha(double white, double alpha);
    /// Shown as a calibrated white of the same number.
    static Ref<NSColor> colorWithDeviceWhite_alpha(double white, double alpha);

    /// Opaque named colours; each call answers the same object.
    static Ref<NSColor> blackColor();
    static Ref<NSColor> whiteColor();
    static Ref<NSColor> grayColor();
    static Ref<NSColor> redColor();
    static Ref<NSColor> blueColor();
    /// Of the background of selected rows, in the list that has the keyboard and in others. Black and white
    /// text can both be read on them.
    static Ref<NSColor> alternateSelectedControlColor();
    static Ref<NSColor> secondarySelectedControlColor();

    /// Make the colour the current one of the current graphics context, for fills, strokes, or both.
    void setFill() const;
    void setStroke() const;
    void set() const;

    Space space() const { return _space; }
    /// Red, green, blue and alpha; the first three are equal for a grey.
    std::array<double, 4> components() const { return _components; }

    /// As it appears in the record of a drawing: "sRGB(0, 0, 1, 1)", "calibratedRGB(0, 0, 1, 1)",
    /// "white(0.5, 1)" or "deviceWhite(0.5, 1)".
    std::string description() const;

    bool isEqual(const NSObject* other) const override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    NSColor(Space space, std::array<double, 4> components) : _space(space), _components(components) {}

    Space _space;
    std::array<double, 4> _components;
};
