#include "ChoicesPopover.h"

#include "Resources.h"

#include <array>
#include <utility>

constexpr double kRowHeight = 24.0;

constexpr std::array kSelectors{selector<&ChoicesPopover::setCheckItem>("setCheckItem:")};
constinit const ClassTable ChoicesPopover::table{"ChoicesPopover", &NSObject::table, {}, kSelectors};

ChoicesPopover::ChoicesPopover(Ref<ZuMultiSelectComboBox> comboBox)
    : _comboBox(std::move(comboBox)), _tableView(make<NSTableView>()), _popover(make<NSPopover>())
{
    const Ref<ZuTableCheckImageCell> cell = make<ZuTableCheckImageCell>();
    cell->awakeFromNib();
    cell->loadImage_withSecond_withThird(icon("content-check-no").get(), icon("content-check-yes").get(),
                                         icon("content-check-off").get());
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setDataCell(cell);
    _tableView->setRowHeight(kRowHeight);
    _tableView->setHeaderView(nullptr);
    _tableView->addTableColumn(column);
    _popover->setDelegate(_comboBox.get()); // which takes what is checked when it closes
}

void ChoicesPopover::show()
{
    const double height = kRowHeight * static_cast<double>(_comboBox->values_()->count());
    const Ref<NSScrollView> list =
        make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, _comboBox->bounds().size.width, height));
    list->setDocumentView(_tableView);
    _tableView->setDelegate(this);
    _tableView->setDataSource(this);
    _popover->setContentView(list);
    _popover->showRelativeToRect_ofView_preferredEdge({}, _comboBox.get(), NSRectEdge::MaxY);
}

ZuMultiSelectComboBoxData& ChoicesPopover::choiceAtRow(std::int64_t row) const
{
    return **(_comboBox->values_()->begin() + row);
}

std::int64_t ChoicesPopover::numberOfRowsInTableView(NSTableView* /*view*/)
{
    return static_cast<std::int64_t>(_comboBox->values_()->count());
}

void ChoicesPopover::tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                                  NSTableColumn* /*column*/, std::int64_t row)
{
    auto& check = dynamic_cast<ZuTableCheckImageCell&>(*cell);
    const ZuMultiSelectComboBoxData& choice = choiceAtRow(row);
    check.setStringValue(choice.value());
    check.setIsChecked(choice.isCheck() ? 1 : 0);
}

void ChoicesPopover::setCheckItem(NSObject* row)
{
    ZuMultiSelectComboBoxData& choice = choiceAtRow(dynamic_cast<NSNumber&>(*row).integerValue());
    choice.setIsCheck(!choice.isCheck());
    _tableView->setNeedsDisplay();
    _comboBox->sendAction_to(_comboBox->action(), _comboBox->target().get());
}
