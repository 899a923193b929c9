#include "PicturesPage.h"

#include "Texts.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSDate.h>
#include <platform/graphics/NSImage.h>
#include <util/FileUtil.h>
#include <util/ImageUtil.h>
#include <util/StringUtil.h>
#include <util/SystemUtil.h>
#include <window/ZuCenterTextFieldCell.h>
#include <window/ZuImageCell.h>
#include <window/ZuTableCheckImageCell.h>

#include <array>
#include <chrono>

namespace
{

constexpr NSSize kThumbnailSize{60.0, 40.0};

constexpr std::array kSelectors{
    selector<&PicturesPage::makeNextThumbnail>("makeNextThumbnail"),
};

/// Its size, and when it was changed.
std::string detailsOf(const std::filesystem::path& file)
{
    std::error_code error;
    const auto written = std::filesystem::last_write_time(file, error);
    if (error) {
        return localised("The file is gone.");
    }
    const auto bytes = static_cast<std::uint64_t>(FileUtil::getFileSize(file.c_str()));
    const std::chrono::duration<double> moment = std::chrono::file_clock::to_sys(written).time_since_epoch();
    const Ref<NSString> date = SystemUtil::DateToString_withFormat(
        NSDate::dateWithTimeIntervalSince1970(moment.count()).get(), text("d MMMM yyyy, HH:mm").get());
    return FileUtil::QxGetFormatSizeFromBytes(bytes)->UTF8String() + ", " +
           StringUtil::NilToEmpty(date.get())->UTF8String();
}

} // namespace

constinit const ClassTable PicturesPage::table{
    "PicturesPage", &Page::table, {}, kSelectors, makeObject<PicturesPage>};

const ClassTable& PicturesPage::classTable() const
{
    return table;
}

PicturesPage::PicturesPage() = default;

PicturesPage::~PicturesPage() = default;

bool* PicturesPage::checkOf(std::size_t record) const
{
    return &phone()->pictures()[record].isChecked;
}

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
    const Ref<NSImage> picture =
        make<NSImage>()->initWithContentsOfFile(text(_wanted.front().string()).get());
    if (picture) {
        const NSSize size = ImageUtil::getEqualScaleImageSize_imageSize(kThumbnailSize, picture->size());
        _thumbnails[_wanted.front()] = ImageUtil::resizeImage_size(picture.get(), size);
        tableView()->setNeedsDisplay();
    }
    _wanted.pop_front();
    if (!_wanted.empty()) {
        performSelector_withObject_afterDelay(SEL{"makeNextThumbnail"}, nullptr, 0.0);
    }
}
