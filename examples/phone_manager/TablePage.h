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

    /// Below the line of text, which is as wide as the page's content.
    static constexpr double kStatusBottom = 14.0;

    /// Shows the table, for good, `top` points below the page's upper edge.
    void setTable(Ref<NSTableView> view, double top = 0.0);
    /// In UTF-8.
    void setStatus(const std::string& status);

private:
    Ref<Label> _status;
};
