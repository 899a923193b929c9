#pragma once

#include "Page.h"

#include <deque>
#include <filesystem>
#include <map>

/// The pictures, each with a small one, its name, and size and date of its file. Small pictures are made when
/// their rows first show, one with each turn of the event loop, so that scrolling does not wait for them.
class PicturesPage final : public Page
{
public:
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;

    /// Sent by the event loop.
    void makeNextThumbnail();

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    bool* checkOf(std::size_t record) const override { return &phone()->pictures()[record].isChecked; }
    std::size_t recordCount() const override { return phone()->pictures().size(); }
    const char* statusKey() const override { return "%s of %s pictures checked"; }

private:
    std::map<std::filesystem::path, Ref<NSImage>> _thumbnails; // null where none could be made, or not yet
    std::deque<std::filesystem::path> _wanted;                 // in the order in which they are made
};
