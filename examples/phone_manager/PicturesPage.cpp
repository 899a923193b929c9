#include "PicturesPage.h"

#include "Resources.h"

constinit const ClassTable PicturesPage::table{
    "PicturesPage", &Page::table, {}, {}, makeObject<PicturesPage>};

void PicturesPage::show(std::size_t record, NSCell& cell, std::size_t column)
{
    const Picture& picture = phone->pictures[record];
    if (auto* thumbnail = dynamic_cast<ZuImageCell*>(&cell)) {
        thumbnail->setImage(picture.thumbnail);
    } else {
        cell.setStringValue(
            text(column == 1 ? shownName(picture.file.filename().string()) : detailsOf(picture.file)));
    }
}
