#include "window/Classes.h"

#include "window/DragDropView.h"
#include "window/PelSmsTableCheckImageCell.h"
#include "window/WyClickableURLTextField.h"
#include "window/ZuBorderView.h"
#include "window/ZuBox.h"
#include "window/ZuCenterTextFieldCell.h"
#include "window/ZuCheckImageCell.h"
#include "window/ZuCheckTableHeaderView.h"
#include "window/ZuComboBox.h"
#include "window/ZuFlippedView.h"
#include "window/ZuHyperlinkTextField.h"
#include "window/ZuImageCell.h"
#include "window/ZuLine.h"
#include "window/ZuMultiSelectComboBox.h"
#include "window/ZuOutlineImageCell.h"
#include "window/ZuOutlineView.h"
#include "window/ZuProgressView.h"
#include "window/ZuSimpleButton.h"
#include "window/ZuSmsImageCell.h"
#include "window/ZuTableCheckImageCell.h"
#include "window/ZuTableCornerView.h"
#include "window/ZuTableHeaderCell.h"
#include "window/ZuToolButton.h"

#include <array>

namespace
{

constexpr std::array kClasses{
    &DragDropView::table,
    &PelSmsTableCheckImageCell::table,
    &WyClickableURLTextField::table,
    &ZuBorderView::table,
    &ZuBox::table,
    &ZuCenterTextFieldCell::table,
    &ZuCheckImageCell::table,
    &ZuCheckTableHeaderView::table,
    &ZuComboBox::table,
    &ZuFlippedView::table,
    &ZuHyperlinkTextField::table,
    &ZuImageCell::table,
    &ZuLine::table,
    &ZuMultiSelectComboBox::table,
    &ZuOutlineImageCell::table,
    &ZuOutlineView::table,
    &ZuProgressView::table,
    &ZuSimpleButton::table,
    &ZuSmsImageCell::table,
    &ZuTableCheckImageCell::table,
    &ZuTableCornerView::table,
    &ZuTableHeaderCell::table,
    &ZuToolButton::table,
};

} // namespace

constinit const std::span<const ClassTable* const> kWindowClasses{kClasses};
