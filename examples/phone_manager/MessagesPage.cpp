#include "MessagesPage.h"

#include "Resources.h"

#include <platform/appkit/NSEvent.h>
#include <platform/appkit/NSTableColumn.h>
#include <platform/appkit/NSWindow.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSAttributedString.h>
#include <platform/foundation/NSMutableArray.h>
#include <platform/foundation/NSNumber.h>
#include <platform/foundation/NSURL.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <window/PelSmsTableCheckImageCell.h>
#include <window/ZuHyperlinkTextField.h>
#include <window/ZuMultiSelectComboBoxData.h>
#include <window/ZuSimpleButton.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace
{

constexpr std::int32_t kNotSent = 5;
constexpr double kTextSize = 13.0;
constexpr NSSize kNameSize{220.0, 22.0};
constexpr double kNameTop = 4.0; // how far the field stands above the name that it covers
constexpr const char* kEveryone = "Everyone";

constexpr std::array kProperties{
    outlet<&MessagesPage::nameFilter>("nameFilter"),
    outlet<&MessagesPage::kindFilter>("kindFilter"),
    outlet<&MessagesPage::messageField>("messageField"),
};
constexpr std::array kSelectors{
    selector<&MessagesPage::filter>("filter:"),
    selector<&MessagesPage::PopOver>("PopOver:"),
    selector<&MessagesPage::switchEditing>("switchEditing:"),
    selector<&MessagesPage::editName>("editName:"),
};

/// A message's row, that tells the table's delegate of presses on the name.
class MessageCell final : public PelSmsTableCheckImageCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t /*zone*/) const override
    {
        return Ref<NSCell>::adopt(new MessageCell(*this));
    }

    NSCellHitResult hitTestForEvent_inRect_ofView(NSEvent* event, NSRect frame, NSView* view) override
    {
        // The column stands behind the checks, but the cell measures from the table's left edge.
        const NSPoint place = event->locationInWindow();
        const Ref<NSEvent> moved = NSEvent::mouseEventWithType_location_window(
            event->type(), {place.x - frame.origin.x, place.y}, event->window().get());
        const NSCellHitResult hit =
            PelSmsTableCheckImageCell::hitTestForEvent_inRect_ofView(moved.get(), frame, view);
        if (hit == NSCellHitContentArea && event->type() == NSEventType::LeftMouseDown) {
            const auto& rows = dynamic_cast<NSTableView&>(*view);
            rows.delegate()->performSelector_withObject(SEL{"editName:"},
                                                        NSNumber::numberWithInteger(rows.clickedRow()).get());
        }
        return hit;
    }
};

bool isInLink(char16_t character)
{
    return character > u' ' && character < u'\x7F' && character != u'<' && character != u'>' &&
           character != u'"';
}

/// Where the link ends that begins at a place; there if none does. Signs that end a sentence do not belong
/// to it.
std::size_t endOfLink(std::u16string_view words, std::size_t begin)
{
    const std::u16string_view rest = words.substr(begin);
    if (!rest.starts_with(u"http://") && !rest.starts_with(u"https://")) {
        return begin;
    }
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(rest, isInLink) - rest.begin());
    return begin + rest.substr(0, end).find_last_not_of(u".,:;!?'()[]{}") + 1;
}

/// A text whose web addresses are links.
Ref<NSAttributedString> linked(const std::string& utf8)
{
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", kTextSize);
    const Ref<NSString> whole = text(utf8);
    const std::u16string_view words = whole->characters();
    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>()->initWithAttributedString(
        ZuHyperlinkTextField::hyperlinkFromString_withFont(whole.get(), font).get());
    for (std::size_t at = 0; (at = words.find(u"http", at)) != std::u16string_view::npos; ++at) {
        const std::size_t end = endOfLink(words, at);
        if (end > at) {
            const std::u16string_view link = words.substr(at, end - at);
            const Ref<NSString> address = text({link.begin(), link.end()}); // it is ASCII
            const Ref<NSAttributedString> look =
                ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(address.get(), address, font);
            result->setAttributes_range(look->runs().front().attributes, {at, link.size()});
            at = end - 1;
        }
    }
    return result;
}

} // namespace

constinit const ClassTable MessagesPage::table{"MessagesPage", &Page::table, kProperties, kSelectors,
                                               makeObject<MessagesPage>};

void MessagesPage::awakeFromNib()
{
    Page::awakeFromNib();
    tableView->tableColumns()[1]->setDataCell(make<MessageCell>());
    messageField->setCanCopyURLs(true);
    nameFilter->setUp();
    nameFilter->setStringValue(text(localised(kEveryone)));
    kindFilter->setUp();
    for (const char* name : Message::kKindNames) {
        const auto choice = make<ZuMultiSelectComboBoxData>();
        choice->setKey(text(name));
        choice->setValue(text(shownGroup(name)));
        choice->setIsCheck(true);
        kindFilter->values_()->addObject(choice);
    }
    kindFilter->setCheckValue();
    _kinds = make<ChoicesPopover>(kindFilter);
}

// Filters

void MessagesPage::update()
{
    if (phone() != nullptr && recordCount() != _namesShown) {
        showNames();
    }
    filter(nullptr);
}

void MessagesPage::showNames()
{
    std::set<std::string_view> names;
    for (const Message& message : phone()->messages()) {
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

void MessagesPage::filter(NSObject* /*sender*/)
{
    const Ref<NSString> name = nameFilter->stringValue();
    const bool everyone = name->length() == 0 || name->isEqual(text(localised(kEveryone)).get());
    std::vector<bool> showsKind;
    for (const auto& choice : *kindFilter->values_()) {
        showsKind.push_back(choice->isCheck());
    }
    std::vector<std::size_t> rows = allRecords();
    std::erase_if(rows, [&](std::size_t record) {
        const Message& message = phone()->messages()[record];
        return !showsKind[static_cast<std::size_t>(message.kind)] ||
               (!everyone &&
                text(message.partner())->rangeOfString_options(name.get(), NSCaseInsensitiveSearch).length ==
                    0);
    });
    setRows(std::move(rows));
    tableViewSelectionDidChange(tableView.get());
}

void MessagesPage::PopOver(NSObject* /*sender*/)
{
    _kinds->show();
}

// Messages

void MessagesPage::tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell,
                                                                NSTableColumn* column, std::int64_t row)
{
    Page::tableView_willDisplayCell_forTableColumn_row(view, cell, column, row);
    if (auto* shown = dynamic_cast<PelSmsTableCheckImageCell*>(cell)) {
        const Message& message = messageAtRow(row);
        shown->setFrontImage(groupIcon(message.kindName()).get());
        shown->setTitle(text(message.partner()));
        shown->setButtonContents(text(message.text));
        shown->setEditNameFlag(_editsNames);
        shown->setSentSmsType(message.kind == Message::Kind::Failed ? kNotSent : 0);
    }
}

void MessagesPage::tableViewSelectionDidChange(NSTableView* view)
{
    if (view->selectedRow() < 0) {
        messageField->setStringValue(text(localised("Select a message to read all of it.")));
        return;
    }
    const Message& message = messageAtRow(view->selectedRow());
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

// Names

void MessagesPage::switchEditing(NSObject* button)
{
    _editsNames = !_editsNames;
    dynamic_cast<ZuSimpleButton&>(*button).setTitle(text(localised(_editsNames ? "Done" : "Edit names")));
    tableView->setNeedsDisplay();
}

void MessagesPage::editName(NSObject* row)
{
    const std::int64_t place = dynamic_cast<NSNumber&>(*row).integerValue();
    _edited = recordAtRow(place);
    const Message& message = phone()->messages()[_edited];
    const NSRect frame = tableView->frameOfCellAtColumn_row(1, place);
    const NSSize picture = groupIcon(message.kindName())->size();
    const double top = frame.origin.y + (frame.size.height - picture.height) * 0.5 - kNameTop;
    const Ref<NSTextField> field =
        make<NSTextField>()->initWithFrame({{frame.origin.x + picture.width, top}, kNameSize});
    field->setStringValue(text(message.name));
    field->setAccessibilityLabel(text(localised("Name")));
    field->setDelegate(this);
    _nameField = field.get();
    tableView->addSubview(field);
    field->selectText(nullptr);
}

void MessagesPage::controlTextDidEndEditing(NSTextField* field)
{
    const Ref<NSTextField> edited = _nameField.get();
    if (!edited || edited != field) {
        return;
    }
    _nameField = nullptr;
    edited->removeFromSuperview();
    const Message before = phone()->messages()[_edited];
    const std::string name = edited->stringValue()->UTF8String();
    if (name == before.name) {
        return;
    }
    for (Message& message : phone()->messages()) {
        if (message.number == before.number && (!before.number.empty() || message.name == before.name)) {
            message.name = name;
        }
    }
    showNames();
    phone()->didChange();
}
