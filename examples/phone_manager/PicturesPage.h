#pragma once

#include "Page.h"

/// The pictures, each with a small one, its name, and size and date of its file.
class PicturesPage final : public Page
{
public:
    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    std::size_t recordCount() const override { return phone->pictures.size(); }
    bool& isChecked(std::size_t record) const override { return phone->pictures[record].isChecked; }
    void show(std::size_t record, NSCell& cell, std::size_t column) override;
};
