#pragma once

#include <window/ZuTableHeaderCell.h>

/// A header whose title begins where the texts of its column do.
class HeaderCell final : public ZuTableHeaderCell
{
public:
    /// How much farther right the title stands, in points.
    double titleShift = 0.0;

    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;
};
