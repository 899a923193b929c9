#include "MessagesPage.h"

#include "Resources.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

constexpr const char* kEveryone = "Everyone";

constexpr std::array kProperties{
    outlet<&MessagesPage::nameFilter>("nameFilter"),
    outlet<&MessagesPage::kindFilter>("kindFilter"),
    outlet<&MessagesPage::messageField>("messageField"),
};
constexpr std::array kSelectors{
    selector<&MessagesPage::filter>("filter:"),
    selector<&MessagesPage::PopOver>("PopOver:"),
};
constinit const ClassTable MessagesPage::table{"MessagesPage", &Page::table, kProperties, kSelectors,
                                               makeObject<MessagesPage>};

/// A text whose web addresses are links. Signs that end a sentence do not belong to them.
static Ref<NSAttributedString> linked(const std::string& utf8)
{
    constexpr double kTextSize = 13.0;
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", kTextSize);
    const Ref<NSString> whole = text(utf8);
    const std::u16string_view words = whole->characters();
    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>()->initWithAttributedString(
        ZuHyperlinkTextField::hyperlinkFromString_withFont(whole.get(), font).get());
    const auto isInLink = [](char16_t character) {
        return character > u' ' && character < u'\x7F' && character != u'<' && character != u'>' &&
               character != u'"';
    };
    for (std::size_t at = 0; (at = words.find(u"http", at)) != std::u16string_view::npos; ++at) {
        std::u16string_view link = words.substr(at);
        if (link.starts_with(u"http://") || link.starts_with(u"https://")) {
            link = {link.begin(), std::ranges::find_if_not(link, isInLink)};
            link = link.substr(0, link.find_last_not_of(u".,:;!?'()[]{}") + 1);
            const Ref<NSString> address = NSString::stringWithCharacters(link);
            const Ref<NSAttributedString> look =
                ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(address.get(), address, font);
            result->setAttributes_range(look->runs().front().attributes, {at, link.size()});
            at += link.size() - 1;
        }
    }
    return result;
}

void MessagesPage::awakeFromNib()
{
    Page::awakeFromNib();
    messageField->setCanCopyURLs(true);
    nameFilter->setUp();
    nameFilter->setStringValue(text(localised(kEveryone)));
    kindFilter->setUp();
    for (const char* state : Message::kStates) {
        const auto choice = make<ZuMultiSelectComboBoxData>();
        choice->setKey(text(state));
        choice->setValue(text(shownGroup(state)));
        choice->setIsCheck(true);
        kindFilter->values_()->addObject(choice);
    }
    kindFilter->setCheckValue();
    _kinds = make<ChoicesPopover>(kindFilter);
}

// Filters

void MessagesPage::update()
{
    if (recordCount() != _namesShown) {
        showNames();
    }
    const Ref<NSString> name = nameFilter->stringValue();
    const bool everyone = name->length() == 0 || name->isEqual(text(localised(kEveryone)).get());
    _name = everyone ? nullptr : name;
    _showsKind.clear();
    for (const auto& choice : *kindFilter->values_()) {
        _showsKind.push_back(choice->isCheck());
    }
    Page::update();
    tableViewSelectionDidChange(tableView.get());
}

void MessagesPage::showNames()
{
    std::set<std::string_view> names;
    for (const Message& message : phone->messages) {
        names.insert(message.partner());
    }
    const Ref<NSMutableArray<NSString>> values = nameFilter->values_();
    values->removeAllObjects();
    values->addObject(text(localised(kEveryone)));
    for (const std::string_view name : names) {
        values->addObject(text(std::string(name)));
    }
    nameFilter->reloadData();
    _namesShown = recordCount();
}

bool MessagesPage::isShown(std::size_t record) const
{
    const Message& message = phone->messages[record];
    return _showsKind[message.state] &&
           (!_name ||
            text(message.partner())->rangeOfString_options(_name.get(), NSCaseInsensitiveSearch).length > 0);
}

// Messages

void MessagesPage::show(std::size_t record, NSCell& cell, std::size_t /*column*/)
{
    constexpr std::int32_t kNotSent = 5; // as the cell knows it
    const Message& message = phone->messages[record];
    auto& row = dynamic_cast<PelSmsTableCheckImageCell&>(cell);
    row.setFrontImage(icon(std::string("group-") + Message::kStates[message.state]).get());
    row.setTitle(text(message.partner()));
    row.setButtonContents(text(message.text));
    row.setSentSmsType(message.state == Message::kFailed ? kNotSent : 0);
}

void MessagesPage::tableViewSelectionDidChange(NSTableView* view)
{
    if (view->selectedRow() < 0) {
        messageField->setStringValue(text(localised("Select a message to read all of it.")));
        return;
    }
    const Message& message = phone->messages[recordAtRow(view->selectedRow())];
    const std::string about = message.number + (message.date.empty() ? "" : ", " + message.date);
    messageField->setAttributedStringValue(linked(about + '\n' + message.text));
}

bool MessagesPage::textField_openURL(NSTextField* /*field*/, NSObject* url)
{
    if (const auto* address = dynamic_cast<NSURL*>(url)) {
        status->setStringValue(text(localised("Opening %s", {address->absoluteString()->UTF8String()})));
    }
    return false; // the desktop opens it
}
