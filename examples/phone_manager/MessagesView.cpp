#include "MessagesView.h"

#include "Look.h"
#include "PageView.h"
#include "Texts.h"

#include <platform/appkit/NSEvent.h>
#include <platform/appkit/NSPopover.h>
#include <platform/appkit/NSScrollView.h>
#include <platform/appkit/NSTableColumn.h>
#include <platform/appkit/NSTableHeaderView.h>
#include <platform/appkit/NSTextFieldCell.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSAttributedString.h>
#include <platform/foundation/NSMutableArray.h>
#include <platform/foundation/NSNumber.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <window/PelSmsTableCheckImageCell.h>
#include <window/WyClickableURLTextField.h>
#include <window/ZuComboBox.h>
#include <window/ZuHyperlinkTextField.h>
#include <window/ZuMultiSelectComboBox.h>
#include <window/ZuMultiSelectComboBoxData.h>
#include <window/ZuSimpleButton.h>
#include <window/ZuTableCheckImageCell.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>

namespace
{

constexpr double kFilterHeight = 26.0;
constexpr double kFilterGap = 8.0;
constexpr double kFilterWidth = 148.0;
constexpr double kRowHeight = 52.0;
constexpr double kChoiceHeight = 24.0;
constexpr double kHelpLeft = 150.0; // of the page's content
constexpr double kHelpHeight = 18.0;
constexpr double kNameWidth = 220.0;
constexpr double kNameHeight = 22.0;
constexpr double kNameTop = 4.0; // above the name that it covers
constexpr std::int32_t kNotSent = 5;
constexpr const char* kGuide = "https://example.org/phone-manager/messages";

struct KindName {
    Message::Kind kind;
    const char* name; // also that of the check
    const char* image;
};
constexpr std::array kKinds{KindName{Message::Kind::Received, "Received", "received"},
                            KindName{Message::Kind::Sent, "Sent", "sent"},
                            KindName{Message::Kind::Failed, "Failed", "sent"}};

constexpr std::array kSelectors{
    selector<&MessagesView::filter>("filter:"),
    selector<&MessagesView::PopOver>("PopOver:"),
    selector<&MessagesView::setCheckItem>("setCheckItem:"),
    selector<&MessagesView::switchEditing>("switchEditing:"),
    selector<&MessagesView::editName>("editName:"),
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
        const NSCellHitResult hit =
            PelSmsTableCheckImageCell::hitTestForEvent_inRect_ofView(event, frame, view);
        if (hit == NSCellHitContentArea && event->type() == NSEventType::LeftMouseDown) {
            const auto& rows = dynamic_cast<NSTableView&>(*view);
            rows.delegate()->performSelector_withObject(SEL{"editName:"},
                                                        NSNumber::numberWithInteger(rows.clickedRow()).get());
        }
        return hit;
    }
};

/// The name, or if there is none the number.
std::string titleOf(const Message& message)
{
    return message.name.empty() ? message.number : message.name;
}

} // namespace

constinit const ClassTable MessagesView::table{"MessagesView", &NSView::table, {}, kSelectors};

const ClassTable& MessagesView::classTable() const
{
    return table;
}

MessagesView::MessagesView() = default;

MessagesView::~MessagesView() = default;

MessagesView* MessagesView::initWithFrame(NSRect frame)
{
    TablePage::initWithFrame(frame);
    for (const KindName& kind : kKinds) {
        _images.push_back(icon(kind.image));
    }
    buildFilters();
    buildTable();
    buildHelp();
    setMessages({});
    return this;
}

void MessagesView::buildFilters()
{
    const double left = PageView::kMargin;
    const double right = bounds().size.width - PageView::kMargin;
    const auto place = [](double x, double width) { return NSMakeRect(x, 0.0, width, kFilterHeight); };

    _nameFilter = make<ZuComboBox>()->initWithFrame(place(left, kFilterWidth));
    _nameFilter->setAccessibilityLabel(text(localised("Messages from or to")));
    _nameFilter->setTarget(this);
    _nameFilter->setAction(SEL{"filter:"});

    const double second = left + kFilterWidth + kFilterGap;
    _kindFilter = make<ZuMultiSelectComboBox>()->initWithFrame(place(second, kFilterWidth));
    _kindFilter->setAccessibilityLabel(text(localised("Kinds of messages")));
    _kindFilter->setDelegate(this);
    _kindFilter->setEditable(false);
    for (const KindName& kind : kKinds) {
        const auto choice = make<ZuMultiSelectComboBoxData>();
        choice->setKey(text(kind.name));
        choice->setValue(text(localised(kind.name)));
        choice->setIsCheck(true);
        _kindFilter->values_()->addObject(choice);
    }
    _kindFilter->setCheckValue();

    const double third = second + kFilterWidth + kFilterGap;
    _editButton = make<ZuSimpleButton>()->initWithFrame(place(third, right - third));
    _editButton->awakeFromNib();
    _editButton->setTarget(this);
    _editButton->setAction(SEL{"switchEditing:"});
    for (const Ref<NSView>& view :
         std::initializer_list<Ref<NSView>>{_nameFilter, _kindFilter, _editButton}) {
        addSubview(view);
    }
}

void MessagesView::buildTable()
{
    _tableView = make<NSTableView>();
    _tableView->setRowHeight(kRowHeight);
    _tableView->setHeaderView(nullptr);
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setDataCell(make<MessageCell>());
    _tableView->addTableColumn(column);
    _tableView->setDelegate(this);
    _tableView->setDataSource(this);
    setTable(_tableView, kFilterHeight + kFilterGap);

    buildChoices();
    const Ref<NSScrollView> list = make<NSScrollView>()->initWithFrame(
        NSMakeRect(0.0, 0.0, kFilterWidth, kChoiceHeight * static_cast<double>(kKinds.size())));
    list->setDocumentView(_choices);
    _popover = make<NSPopover>();
    _popover->setContentView(list);
    _popover->setDelegate(_kindFilter.get()); // which takes what is checked when it closes
}

void MessagesView::buildChoices()
{
    _choices = make<NSTableView>();
    _choices->setRowHeight(kChoiceHeight);
    _choices->setHeaderView(nullptr);
    const Ref<ZuTableCheckImageCell> cell = make<ZuTableCheckImageCell>();
    cell->awakeFromNib();
    for (const char* image : {"content-check-no", "content-check-yes", "content-check-off"}) {
        _images.push_back(icon(image));
    }
    const std::size_t first = kKinds.size();
    cell->loadImage_withSecond_withThird(_images[first].get(), _images[first + 1].get(),
                                         _images[first + 2].get());
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setDataCell(cell);
    _choices->addTableColumn(column);
    _choices->setDelegate(this);
    _choices->setDataSource(this);
}

void MessagesView::buildHelp()
{
    const NSRect page = bounds();
    const double left = PageView::kMargin + kHelpLeft;
    _help = make<WyClickableURLTextField>()->initWithFrame(
        NSMakeRect(left, page.size.height - kStatusBottom - kHelpHeight,
                   page.size.width - PageView::kMargin - left, kHelpHeight));
    _help->setBezeled(false);
    _help->setDrawsBackground(false);
    _help->setCanCopyURLs(true);

    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", 13.0);
    const Ref<NSString> link = text(localised("the guide"));
    const Ref<NSString> sentence = text(localised("Some could not be sent? See %s.", {link->UTF8String()}));
    const Ref<NSMutableAttributedString> help = make<NSMutableAttributedString>()->initWithAttributedString(
        ZuHyperlinkTextField::hyperlinkFromString_withFont(sentence.get(), font).get());
    const Ref<NSAttributedString> blue =
        ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(link.get(), text(kGuide), font);
    help->setAttributes_range(blue->runs().front().attributes,
                              sentence->rangeOfString_options(link.get(), 0));
    _help->setAttributedStringValue(help);
    addSubview(_help);
}

void MessagesView::setMessages(std::vector<Message> messages)
{
    if (const Ref<NSTextField> field = _nameField.get()) {
        _nameField = nullptr; // it is about one of those before
        field->removeFromSuperview();
    }
    _messages = std::move(messages);
    showNames();
    filter(nullptr);
    _editsNames = true; // until it is switched:
    switchEditing(nullptr);
}

void MessagesView::showNames()
{
    std::set<std::string> names;
    for (const Message& message : _messages) {
        names.insert(titleOf(message));
    }
    const Ref<NSMutableArray<NSString>> values = _nameFilter->values_();
    values->removeAllObjects();
    values->addObject(text(localised("Everyone")));
    for (const std::string& name : names) {
        values->addObject(text(name));
    }
    _nameFilter->reloadData();
    if (_nameFilter->stringValue()->length() == 0) {
        _nameFilter->setStringValue(values->objectAtIndex(0));
    }
}

// Filters

void MessagesView::filter(NSObject* /*sender*/)
{
    const Ref<NSString> name = _nameFilter->stringValue();
    const bool everyone =
        name->length() == 0 || name->isEqual(_nameFilter->values_()->objectAtIndex(0).get());
    const auto isShown = [&](const Message& message) {
        const auto* const kind = std::ranges::find(kKinds, message.kind, &KindName::kind);
        const bool isNamed =
            everyone ||
            text(titleOf(message))->rangeOfString_options(name.get(), NSCaseInsensitiveSearch).location !=
                NSNotFound;
        return isNamed && choiceAtRow(kind - kKinds.begin()).isCheck();
    };
    _shown.clear();
    for (std::size_t place = 0; place < _messages.size(); ++place) {
        if (isShown(_messages[place])) {
            _shown.push_back(place);
        }
    }
    _tableView->selectRowIndexes_byExtendingSelection(nullptr, false);
    _tableView->reloadData();
    setStatus(
        localised("%s of %s messages", {std::to_string(_shown.size()), std::to_string(_messages.size())}));
}

void MessagesView::PopOver(NSObject* /*sender*/)
{
    _popover->showRelativeToRect_ofView_preferredEdge({}, _kindFilter.get(), NSRectEdge::MaxY);
}

void MessagesView::setCheckItem(NSObject* row)
{
    ZuMultiSelectComboBoxData& choice = choiceAtRow(dynamic_cast<NSNumber&>(*row).integerValue());
    choice.setIsCheck(!choice.isCheck());
    filter(nullptr);
}

ZuMultiSelectComboBoxData& MessagesView::choiceAtRow(std::int64_t row) const
{
    return **(_kindFilter->values_()->begin() + row);
}

// What the tables show

std::int64_t MessagesView::numberOfRowsInTableView(NSTableView* view)
{
    return static_cast<std::int64_t>(view == _choices.get() ? kKinds.size() : _shown.size());
}

void MessagesView::tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                                NSTableColumn* /*column*/, std::int64_t row)
{
    if (auto* shown = dynamic_cast<MessageCell*>(cell)) {
        const Message& message = _messages[_shown[static_cast<std::size_t>(row)]];
        const auto* const kind = std::ranges::find(kKinds, message.kind, &KindName::kind);
        shown->setFrontImage(_images[static_cast<std::size_t>(kind - kKinds.begin())].get());
        shown->setTitle(text(titleOf(message)));
        shown->setButtonContents(text(message.text));
        shown->setSentSmsType(message.kind == Message::Kind::Failed ? kNotSent : 0);
        shown->setEditNameFlag(_editsNames);
    } else if (auto* check = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
        const ZuMultiSelectComboBoxData& choice = choiceAtRow(row);
        check->setStringValue(choice.value());
        check->setIsChecked(choice.isCheck() ? 1 : 0);
    }
}

// Names

void MessagesView::switchEditing(NSObject* /*sender*/)
{
    _editsNames = !_editsNames;
    _editButton->setTitle(text(localised(_editsNames ? "Done" : "Edit names")));
    _editButton->setToolTip(text(localised("Click a name to edit it.")));
}

void MessagesView::editName(NSObject* row)
{
    const std::int64_t place = dynamic_cast<NSNumber&>(*row).integerValue();
    _edited = _shown[static_cast<std::size_t>(place)];
    const NSRect frame = _tableView->frameOfCellAtColumn_row(0, place);
    const NSSize picture = _images.front() ? _images.front()->size() : NSSize{};
    const double top = frame.origin.y + (frame.size.height - picture.height) * 0.5 - kNameTop;
    const Ref<NSTextField> field = make<NSTextField>()->initWithFrame(
        NSMakeRect(frame.origin.x + picture.width, top, kNameWidth, kNameHeight));
    field->setStringValue(text(_messages[_edited].name));
    field->setAccessibilityLabel(text(localised("Name")));
    field->setDelegate(this);
    _nameField = field.get();
    _tableView->addSubview(field);
    field->selectText(nullptr);
}

void MessagesView::controlTextDidEndEditing(NSTextField* field)
{
    const Ref<NSTextField> edited = _nameField.get();
    if (!edited || edited != field) {
        return;
    }
    _nameField = nullptr;
    edited->removeFromSuperview();
    const std::string name = edited->stringValue()->UTF8String();
    const std::string number = _messages[_edited].number;
    for (Message& message : _messages) {
        if (message.number == number) {
            message.name = name;
        }
    }
    showNames();
    _tableView->setNeedsDisplay();
}
