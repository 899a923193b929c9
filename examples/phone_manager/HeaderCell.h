#pragma once

#include <window/ZuTableHeaderCell.h>

/// A header whose title begins where the texts of its column do.
class HeaderCell final : public ZuTableHeaderCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    /// How much farther right the title stands, in points. Default 0.
    double titleShift() const { return _titleShift; }
    void setTitleShift(double points) { _titleShift = points; }

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    double _titleShift = 0.0;
};
