#pragma once

#include <window/ZuFlippedView.h>

#include <string>

class Label;
class NSTableView;

/// A page with a table that scrolls, in a border, and a line of text below it.
class TablePage : public ZuFlippedView
{
public:
    TablePage();

    TablePage* initWithFrame(NSRect frame) override;

protected:
    ~TablePage() override;

    /// Shows the table, for good.
    void setTable(Ref<NSTableView> view);
    /// In UTF-8.
    void setStatus(const std::string& status);

private:
    Ref<Label> _status;
};
