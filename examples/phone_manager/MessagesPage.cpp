#include "MessagesPage.h"

#include "ChoicesPopover.h"
#include "Look.h"
#include "Texts.h"

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
#include <util/StringUtil.h>
#include <window/PelSmsTableCheckImageCell.h>
#include <window/ZuComboBox.h>
#include <window/ZuHyperlinkTextField.h>
#include <window/ZuMultiSelectComboBox.h>
#include <window/ZuMultiSelectComboBoxData.h>
#include <window/ZuSimpleButton.h>

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

namespace
{

constexpr double kNameWidth = 220.0;
constexpr double kNameHeight = 22.0;
constexpr double kNameTop = 4.0; // above the name that it covers
constexpr std::int32_t kNotSent = 5;
constexpr const char* kLink = "^https?://[!#-;=?-~]*[A-Za-z0-9/]";
constexpr std::size_t kLongestLink = 2000;

struct KindLook {
    const char* name;
    const char* image;
};
constexpr std::array kKinds{KindLook{"Received", "received"}, KindLook{"Sent", "sent"},
                            KindLook{"Failed", "sent"}};

constexpr std::array kProperties{
    property<&MessagesPage::nameFilter, &MessagesPage::setNameFilter>("nameFilter"),
    property<&MessagesPage::kindFilter, &MessagesPage::setKindFilter>("kindFilter"),
    property<&MessagesPage::editButton, &MessagesPage::setEditButton>("editButton"),
    property<&MessagesPage::messageField, &MessagesPage::setMessageField>("messageField"),
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

/// The name, or if there is none the number.
const std::string& titleOf(const Message& message)
{
    return message.name.empty() ? message.number : message.name;
}

/// A text whose web addresses are links.
Ref<NSAttributedString> linked(const std::string& words)
{
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", 13.0);
    const Ref<NSString> whole = text(words);
    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>()->initWithAttributedString(
        ZuHyperlinkTextField::hyperlinkFromString_withFont(whole.get(), font).get());
    std::size_t done = 0;   // bytes
    std::size_t before = 0; // characters in these
    for (std::size_t place = words.find("http"); place != std::string::npos;
         place = words.find("http", place)) {
        const std::string part = words.substr(place, kLongestLink); // what matches must not be endless
        const std::string link = StringUtil::FindIfMatch_withPattern(part.c_str(), kLink)->UTF8String();
        if (link.empty()) {
            ++place;
            continue;
        }
        before += text(words.substr(done, place - done))->length();
        const Ref<NSAttributedString> blue =
            ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(text(link).get(), text(link), font);
        result->setAttributes_range(blue->runs().front().attributes, {before, link.size()});
        before += link.size(); // which is ASCII
        done = place += link.size();
    }
    return result;
}

} // namespace

constinit const ClassTable MessagesPage::table{"MessagesPage", &Page::table, kProperties, kSelectors,
                                               makeObject<MessagesPage>};

const ClassTable& MessagesPage::classTable() const
{
    return table;
}

MessagesPage::MessagesPage() = default;

MessagesPage::~MessagesPage() = default;

// Outlets

Ref<ZuComboBox> MessagesPage::nameFilter() const
{
    return _nameFilter;
}

void MessagesPage::setNameFilter(Ref<ZuComboBox> comboBox)
{
    _nameFilter = std::move(comboBox);
}

Ref<ZuMultiSelectComboBox> MessagesPage::kindFilter() const
{
    return _kindFilter;
}

void MessagesPage::setKindFilter(Ref<ZuMultiSelectComboBox> comboBox)
{
    _kindFilter = std::move(comboBox);
}

Ref<ZuSimpleButton> MessagesPage::editButton() const
{
    return _editButton;
}

void MessagesPage::setEditButton(Ref<ZuSimpleButton> button)
{
    _editButton = std::move(button);
}

NSTableView* MessagesPage::kindChoices() const
{
    return _kinds->tableView();
}

// Set-up

void MessagesPage::awakeFromNib()
{
    Page::awakeFromNib();
    for (const KindLook& kind : kKinds) {
        _images.push_back(icon(kind.image));
    }
    tableView()->tableColumns()[1]->setDataCell(make<MessageCell>());
    tableView()->setAllowsMultipleSelection(false);
    _messageField->setCanCopyURLs(true);
    _nameFilter->setUp();
    _nameFilter->setStringValue(text(localised("Everyone")));
    _kindFilter->setUp();
    for (const KindLook& kind : kKinds) {
        const auto choice = make<ZuMultiSelectComboBoxData>();
        choice->setKey(text(kind.name));
        choice->setValue(text(localised(kind.name)));
        choice->setIsCheck(true);
        _kindFilter->values_()->addObject(choice);
    }
    _kindFilter->setCheckValue();
    _kinds = make<ChoicesPopover>(_kindFilter);
}

void MessagesPage::showNames()
{
    std::set<std::string_view> names;
    for (const Message& message : phone()->messages()) {
        names.insert(titleOf(message));
    }
    const Ref<NSMutableArray<NSString>> values = _nameFilter->values_();
    values->removeAllObjects();
    values->addObject(text(localised("Everyone")));
    for (const std::string_view name : names) {
        values->addObject(text(std::string(name)));
    }
    _nameFilter->reloadData();
    _namesShown = phone()->messages().size();
}

// Filters

void MessagesPage::update()
{
    if (phone() != nullptr && phone()->messages().size() != _namesShown) {
        showNames();
    }
    filter(nullptr);
}

void MessagesPage::filter(NSObject* /*sender*/)
{
    const Ref<NSString> name = _nameFilter->stringValue();
    const bool everyone = name->length() == 0 || name->isEqual(text(localised("Everyone")).get());
    std::array<bool, kKinds.size()> showsKind{};
    std::ranges::transform(*_kindFilter->values_(), showsKind.begin(),
                           [](const auto& choice) { return choice->isCheck(); });
    std::vector<std::size_t> rows;
    for (std::size_t place = 0; phone() != nullptr && place < recordCount(); ++place) {
        const Message& message = phone()->messages()[place];
        const bool isNamed =
            everyone ||
            text(titleOf(message))->rangeOfString_options(name.get(), NSCaseInsensitiveSearch).length > 0;
        if (isNamed && showsKind[static_cast<std::size_t>(message.kind)]) {
            rows.push_back(place);
        }
    }
    setRows(std::move(rows));
    showMessage();
}

void MessagesPage::PopOver(NSObject* /*sender*/)
{
    _kinds->show();
}

bool* MessagesPage::checkOf(std::size_t record) const
{
    return &phone()->messages()[record].isChecked;
}

// What the table shows

void MessagesPage::tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell,
                                                                NSTableColumn* column, std::int64_t row)
{
    Page::tableView_willDisplayCell_forTableColumn_row(view, cell, column, row);
    if (auto* shown = dynamic_cast<MessageCell*>(cell)) {
        const Message& message = messageAtRow(row);
        shown->setFrontImage(_images[static_cast<std::size_t>(message.kind)].get());
        shown->setTitle(text(titleOf(message)));
        shown->setButtonContents(text(message.text));
        shown->setSentSmsType(message.kind == Message::Kind::Failed ? kNotSent : 0);
        shown->setEditNameFlag(_editsNames);
    }
}

void MessagesPage::tableViewSelectionDidChange(NSTableView* /*view*/)
{
    showMessage();
}

void MessagesPage::showMessage()
{
    const std::int64_t row = tableView()->selectedRow();
    if (row < 0) {
        _messageField->setStringValue(text(localised("Select a message to read all of it.")));
        return;
    }
    const Message& message = messageAtRow(row);
    const std::string about = message.number + (message.date.empty() ? "" : ", " + message.date);
    _messageField->setAttributedStringValue(linked(about + '\n' + message.text));
}

bool MessagesPage::textField_openURL(NSTextField* /*field*/, NSObject* url)
{
    if (const auto* address = dynamic_cast<NSURL*>(url)) {
        status()->setStringValue(text(localised("Opening %s", {address->absoluteString()->UTF8String()})));
    }
    return false; // the desktop opens it
}

// Names

void MessagesPage::switchEditing(NSObject* /*sender*/)
{
    _editsNames = !_editsNames;
    _editButton->setTitle(text(localised(_editsNames ? "Done" : "Edit names")));
    tableView()->setNeedsDisplay();
}

void MessagesPage::editName(NSObject* row)
{
    const std::int64_t place = dynamic_cast<NSNumber&>(*row).integerValue();
    _edited = recordAtRow(place);
    const NSRect frame = tableView()->frameOfCellAtColumn_row(1, place);
    const NSSize picture = _images.front() ? _images.front()->size() : NSSize{};
    const double top = frame.origin.y + (frame.size.height - picture.height) * 0.5 - kNameTop;
    const Ref<NSTextField> field = make<NSTextField>()->initWithFrame(
        NSMakeRect(frame.origin.x + picture.width, top, kNameWidth, kNameHeight));
    field->setStringValue(text(phone()->messages()[_edited].name));
    field->setAccessibilityLabel(text(localised("Name")));
    field->setDelegate(this);
    _nameField = field.get();
    tableView()->addSubview(field);
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
    const std::string name = edited->stringValue()->UTF8String();
    const std::string number = phone()->messages()[_edited].number;
    for (Message& message : phone()->messages()) {
        if (message.number == number) {
            message.name = name;
        }
    }
    showNames();
    phone()->didChange();
}
