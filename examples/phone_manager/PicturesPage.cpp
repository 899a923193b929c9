#include "PicturesPage.h"

#include "Resources.h"

#include <platform/foundation/ClassTable.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuCenterTextFieldCell.h>
#include <window/ZuImageCell.h>
#include <window/ZuTableCheckImageCell.h>

#include <array>

namespace
{

constexpr NSSize kThumbnailSize{60.0, 40.0};

constexpr std::array kSelectors{
    selector<&PicturesPage::makeNextThumbnail>("makeNextThumbnail"),
};

} // namespace

constinit const ClassTable PicturesPage::table{
    "PicturesPage", &Page::table, {}, kSelectors, makeObject<PicturesPage>};

void PicturesPage::tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell,
                                                                NSTableColumn* column, std::int64_t row)
{
    Page::tableView_willDisplayCell_forTableColumn_row(view, cell, column, row);
    const std::filesystem::path& file = phone()->pictures()[recordAtRow(row)].file;
    if (auto* thumbnail = dynamic_cast<ZuImageCell*>(cell)) {
        const auto [made, isNew] = _thumbnails.try_emplace(file);
        thumbnail->setImage(made->second);
        if (isNew) {
            _wanted.push_back(file);
            if (_wanted.size() == 1) {
                performSelector_withObject_afterDelay(SEL{"makeNextThumbnail"}, nullptr, 0.0);
            }
        }
    } else if (auto* details = dynamic_cast<ZuCenterTextFieldCell*>(cell)) {
        details->setStringValue(text(detailsOf(file)));
    } else if (auto* name = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
        name->setStringValue(text(shownName(file.filename().string())));
    }
}

void PicturesPage::makeNextThumbnail()
{
    if (const Ref<NSImage> thumbnail = thumbnailOf(_wanted.front(), kThumbnailSize)) {
        _thumbnails[_wanted.front()] = thumbnail;
        tableView->setNeedsDisplay();
    }
    _wanted.pop_front();
    if (!_wanted.empty()) {
        performSelector_withObject_afterDelay(SEL{"makeNextThumbnail"}, nullptr, 0.0);
    }
}
