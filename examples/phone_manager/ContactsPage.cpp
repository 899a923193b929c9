#include "ContactsPage.h"

#include "Resources.h"

constinit const ClassTable ContactsPage::table{
    "ContactsPage", &Page::table, {}, {}, makeObject<ContactsPage>};

void ContactsPage::show(std::size_t record, NSCell& cell, std::size_t column)
{
    const Contact& contact = phone->contacts[record];
    if (auto* group = dynamic_cast<ZuImageCell*>(&cell)) {
        _group = text(shownGroup(contact.group));
        group->setImageAlignment(NSImageAlignment::Left);
        group->setImage(icon("group-" + contact.group));
        group->setDescription(_group.get());
    } else {
        cell.setStringValue(text(column == 1 ? contact.name : column == 3 ? contact.number : contact.email));
    }
}
