#pragma once

#include "platform/foundation/NSObject.h"

class NSCell;
class NSString;
class NSTableHeaderCell;
class NSTableView;

/// A column of a table: its width and the cells that draw its header and its rows, all of which are kept
/// alive.
class TESSALINE_EXPORT NSTableColumn : public NSObject
{
public:
    NSTableColumn();

    /// Set-up with an identifier.
    NSTableColumn* initWithIdentifier(Ref<NSString> identifier);
    /// A name that tells columns apart. Empty by default; null changes nothing.
    Ref<NSString> identifier() const;
    void setIdentifier(Ref<NSString> identifier);

    /// In whole points, at least `minWidth` and at most `maxWidth`: setting any of them rounds and limits.
    /// Defaults 100, 10 and 10,000. The user changes the width by the header.
    double width() const { return _width; }
    void setWidth(double width);
    double minWidth() const { return _minWidth; }
    void setMinWidth(double width);
    double maxWidth() const { return _maxWidth; }
    void setMaxWidth(double width);

    // The setters that follow ask for no redraw.

    /// The text of the header's cell.
    Ref<NSString> title() const;
    void setTitle(Ref<NSString> title);

    /// Default an `NSTableHeaderCell`. Null changes nothing.
    NSTableHeaderCell* headerCell() const { return _headerCell.get(); }
    void setHeaderCell(Ref<NSTableHeaderCell> cell);

    /// Draws all rows. Default an `NSTextFieldCell`. Null changes nothing.
    NSCell* dataCell() const { return _dataCell.get(); }
    void setDataCell(Ref<NSCell> cell);

    /// The table that the column is in; borrowed, null for none.
    NSTableView* tableView() const { return _tableView; }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSTableColumn() override;

private:
    friend class NSTableView;

    Ref<NSString> _identifier;
    double _width = 100.0;
    double _minWidth = 10.0;
    double _maxWidth = 10000.0;
    Ref<NSTableHeaderCell> _headerCell;
    Ref<NSCell> _dataCell;
    NSTableView* _tableView = nullptr;
};
