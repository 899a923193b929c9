#include "platform/appkit/NSTableColumn.h"

#include "platform/appkit/NSTableHeaderCell.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSString.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{

constexpr double kNarrowest = 1.0;
constexpr double kWidest = 10000.0;

constexpr std::array kProperties{
    property<&NSTableColumn::identifier, &NSTableColumn::setIdentifier>("identifier"),
    property<&NSTableColumn::title, &NSTableColumn::setTitle>("title"),
    property<&NSTableColumn::width, &NSTableColumn::setWidth>("width"),
    property<&NSTableColumn::minWidth, &NSTableColumn::setMinWidth>("minWidth"),
    property<&NSTableColumn::maxWidth, &NSTableColumn::setMaxWidth>("maxWidth"),
};

double limited(double width, double least, double most)
{
    return std::isnan(width) ? least : std::round(std::clamp(width, least, std::max(least, most)));
}

} // namespace

constinit const ClassTable NSTableColumn::table{
    "NSTableColumn", &NSObject::table, kProperties, {}, makeObject<NSTableColumn>};

const ClassTable& NSTableColumn::classTable() const
{
    return table;
}

NSTableColumn::NSTableColumn()
    : _identifier(NSString::stringWithCharacters(u"")), _headerCell(make<NSTableHeaderCell>()),
      _dataCell(make<NSTextFieldCell>())
{
}

NSTableColumn::~NSTableColumn() = default;

NSTableColumn* NSTableColumn::initWithIdentifier(Ref<NSString> identifier)
{
    setIdentifier(std::move(identifier));
    return this;
}

void NSTableColumn::setIdentifier(Ref<NSString> identifier)
{
    if (identifier) {
        _identifier = std::move(identifier);
    }
}

Ref<NSString> NSTableColumn::identifier() const
{
    return _identifier;
}

void NSTableColumn::setWidth(double width)
{
    const double before = std::exchange(_width, limited(width, _minWidth, _maxWidth));
    if (_width != before && _tableView != nullptr) {
        _tableView->columnDidResize();
    }
}

void NSTableColumn::setMinWidth(double width)
{
    _minWidth = limited(width, kNarrowest, kWidest);
    setWidth(_width);
}

void NSTableColumn::setMaxWidth(double width)
{
    _maxWidth = limited(width, kNarrowest, kWidest);
    setWidth(_width);
}

Ref<NSString> NSTableColumn::title() const
{
    return _headerCell->stringValue();
}

void NSTableColumn::setTitle(Ref<NSString> title)
{
    _headerCell->setStringValue(std::move(title));
}

void NSTableColumn::setHeaderCell(Ref<NSTableHeaderCell> cell)
{
    if (cell) {
        _headerCell = std::move(cell);
    }
}

void NSTableColumn::setDataCell(Ref<NSCell> cell)
{
    if (cell) {
        _dataCell = std::move(cell);
    }
}
