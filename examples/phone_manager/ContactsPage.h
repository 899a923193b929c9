#pragma once

#include "Page.h"

/// The address book.
class ContactsPage final : public Page
{
public:
    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    std::size_t recordCount() const override { return phone->contacts.size(); }
    bool& isChecked(std::size_t record) const override { return phone->contacts[record].isChecked; }
    void show(std::size_t record, NSCell& cell, std::size_t column) override;

private:
    Ref<NSString> _group; // kept for the cell that shows it
};
