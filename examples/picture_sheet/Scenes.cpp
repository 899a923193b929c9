#include "Scenes.h"

#include <platform/appkit/NSEvent.h>
#include <platform/appkit/NSScrollView.h>
#include <platform/appkit/NSTableColumn.h>
#include <platform/appkit/NSTextField.h>
#include <platform/foundation/NSAttributedString.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSMutableArray.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/NSBezierPath.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <platform/graphics/NSImageRep.h>
#include <util/UiUtil.h>
#include <window/PelSMSTableData.h>
#include <window/PelSmsTableCheckImageCell.h>
#include <window/WyClickableURLTextField.h>
#include <window/ZuBorderView.h>
#include <window/ZuBox.h>
#include <window/ZuCenterTextFieldCell.h>
#include <window/ZuCheckImageCell.h>
#include <window/ZuCheckTableHeaderView.h>
#include <window/ZuComboBox.h>
#include <window/ZuFlippedView.h>
#include <window/ZuHyperlinkTextField.h>
#include <window/ZuImageCell.h>
#include <window/ZuLine.h>
#include <window/ZuMultiSelectComboBox.h>
#include <window/ZuMultiSelectComboBoxData.h>
#include <window/ZuOutlineImageCell.h>
#include <window/ZuOutlineItem.h>
#include <window/ZuOutlineView.h>
#include <window/ZuProgressView.h>
#include <window/ZuSimpleButton.h>
#include <window/ZuSmsImageCell.h>
#include <window/ZuTableCheckImageCell.h>
#include <window/ZuTableCornerView.h>
#include <window/ZuTableHeaderCell.h>
#include <window/ZuToolButton.h>

#include <array>
#include <string>
#include <utility>

namespace
{

Ref<NSString> text(const char* utf8)
{
    return utf8 != nullptr ? NSString::stringWithUTF8String(utf8) : nullptr;
}

Ref<NSColor> rgb(int red, int green, int blue)
{
    constexpr double kFull = 255.0;
    return NSColor::colorWithSRGBRed_green_blue_alpha(red / kFull, green / kFull, blue / kFull, 1.0);
}

/// A patch in one colour with rounded corners, drawn as sharp as the device can show it.
class Patch final : public NSImageRep
{
public:
    explicit Patch(Ref<NSColor> color) : _color(std::move(color)) {}

    bool drawInRect(NSRect rect) override
    {
        const double radius = rect.size.height * 0.3;
        _color->setFill();
        NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, radius, radius)->fill();
        return true;
    }

private:
    Ref<NSColor> _color;
};

Ref<NSImage> patch(const char* name, NSSize size, Ref<NSColor> color)
{
    Ref<NSImage> image = make<NSImage>()->initWithSize(size);
    image->setName(name);
    image->addRepresentation(make<Patch>(std::move(color)));
    return image;
}

// What the pointer does to a button.

using Handler = void (NSView::*)(NSEvent*);
constexpr Handler kEnter = &NSView::mouseEntered;
constexpr Handler kPress = &NSView::mouseDown;

void send(NSView& view, std::initializer_list<Handler> handlers)
{
    const auto [width, height] = view.bounds().size;
    const NSPoint middle = view.convertPoint_toView({width * 0.5, height * 0.5}, nullptr);
    const Ref<NSEvent> event =
        NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, middle, nullptr);
    for (const Handler handler : handlers) {
        (view.*handler)(event.get());
    }
}

Ref<ZuToolButton> toolButton(std::initializer_list<Handler> handlers = {})
{
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    button->setImage(patch("icon", {32.0, 32.0}, rgb(82, 110, 160)));
    button->setAlternateImage(patch("badge", {24.0, 14.0}, rgb(224, 64, 48)));
    button->setAlternateTitle(text("3"));
    button->setTitle(text("Contacts"));
    button->setToolTip(text("People with numbers"));
    button->setColor_border(rgb(32, 186, 234));
    button->setColor_background(rgb(32, 186, 234));
    button->setColor_border_normal(rgb(222, 226, 231));
    button->setColor_desc_hover(NSColor::whiteColor());
    send(*button, handlers);
    return button;
}

Ref<ZuToolButton> plainToolButton()
{
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    button->setTitle(text("Contacts"));
    return button;
}

Ref<ZuSimpleButton> simpleButton(const char* title, std::initializer_list<Handler> handlers = {})
{
    Ref<ZuSimpleButton> button = make<ZuSimpleButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 32.0));
    button->awakeFromNib();
    button->setTitle(text(title));
    send(*button, handlers);
    return button;
}

Ref<ZuSimpleButton> disabledButton()
{
    Ref<ZuSimpleButton> button = simpleButton("Import");
    button->setEnabled(false);
    return button;
}

Ref<ZuSimpleButton> imageButton(std::initializer_list<Handler> handlers = {})
{
    Ref<ZuSimpleButton> button = simpleButton("Import", handlers);
    button->setImage(patch("icon", {16.0, 16.0}, rgb(255, 196, 0)));
    return button;
}

Ref<ZuSimpleButton> roundButton()
{
    Ref<ZuSimpleButton> button = simpleButton("Import");
    button->setXRadius_(16.0);
    button->setYRadius_(16.0);
    button->setColor_normal_background(rgb(52, 152, 83));
    button->setColor_normal_border(rgb(30, 110, 56));
    return button;
}

/// Neither awake nor with a colour but that of its title.
Ref<ZuSimpleButton> bareButton()
{
    Ref<ZuSimpleButton> button = make<ZuSimpleButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 32.0));
    button->setTitle(text("Import"));
    return button;
}

Ref<ZuProgressView> progressView(double step, double total, double radius = 0.0)
{
    Ref<ZuProgressView> view = make<ZuProgressView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 10.0));
    view->awakeFromNib();
    view->setColor_border_(rgb(140, 150, 160));
    view->setColor_unuse_(NSColor::whiteColor());
    view->setColor_used_(rgb(32, 186, 234));
    view->setXRadius_(radius);
    view->setYRadius_(radius);
    view->setTotal_(total);
    view->setStep_(step);
    return view;
}

Ref<ZuLine> line(NSSize size, std::int32_t type, std::int32_t style)
{
    Ref<ZuLine> view = make<ZuLine>()->initWithFrame({{}, size});
    view->awakeFromNib();
    view->setType_(type);
    view->setStyle_(style);
    return view;
}

Ref<ZuLine> colored(Ref<ZuLine> line)
{
    line->setColor_(rgb(224, 104, 32));
    return line;
}

Ref<ZuBox> box(const char* title, std::int64_t height, Ref<NSColor> color)
{
    Ref<ZuBox> view = make<ZuBox>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    view->awakeFromNib();
    view->setTitle(text(title));
    view->setHeight(height);
    view->setColor(std::move(color));
    return view;
}

/// A view that is nothing but a colour, to be seen where it is put.
Ref<NSView> mark(NSRect frame)
{
    Ref<NSView> view = make<NSView>()->initWithFrame(frame);
    UiUtil::changeBackgroundColor_red_green_blue(view.get(), 224, 104, 32);
    return view;
}

/// With a mark at its origin.
template <class T> Ref<T> marked(Ref<T> view)
{
    view->addSubview(mark(NSMakeRect(4.0, 4.0, 16.0, 16.0)));
    return view;
}

Ref<ZuBorderView> borderView(double width, Ref<NSColor> color)
{
    Ref<ZuBorderView> view = make<ZuBorderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 60.0));
    view->setWidth_border_(width);
    view->setColor_border_(std::move(color));
    return view;
}

Ref<ZuBorderView> flippedBorderView()
{
    Ref<ZuBorderView> view = marked(borderView(1.0, NSColor::blackColor()));
    view->setFlipped(true);
    return view;
}

Ref<ZuBorderView> shadowOfBorder()
{
    Ref<ZuBorderView> view = borderView(4.0, NSColor::blackColor());
    view->setShadow();
    return view;
}

Ref<ZuBorderView> shadowOfFace()
{
    Ref<ZuBorderView> view = borderView(1.0, rgb(200, 205, 210));
    UiUtil::changeBackgroundColor_withColor(view.get(), NSColor::whiteColor().get());
    view->setShadow();
    return view;
}

Ref<ZuFlippedView> flippedView()
{
    Ref<ZuFlippedView> view = make<ZuFlippedView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 60.0));
    return marked(view);
}

Ref<ZuTableCornerView> cornerView()
{
    return make<ZuTableCornerView>()->initWithFrame(NSMakeRect(0.0, 0.0, 16.0, 24.0));
}

constexpr NSRect kComboBoxFrame = NSMakeRect(0.0, 0.0, 180.0, 26.0);

/// A sentence that ends with a link.
Ref<NSAttributedString> linkedText()
{
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", 13.0);
    const Ref<NSMutableAttributedString> sentence =
        make<NSMutableAttributedString>()->initWithAttributedString(
            ZuHyperlinkTextField::hyperlinkFromString_withFont(text("Not sent? Read the guide.").get(), font)
                .get());
    const Ref<NSAttributedString> link = ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(
        text("the guide").get(), text("https://example.org/guide"), font);
    sentence->setAttributes_range(link->runs().front().attributes, {15, 9});
    return sentence;
}

template <class Field> Ref<Field> linkField(double width)
{
    Ref<Field> field = make<Field>();
    field->setFrame(NSMakeRect(0.0, 0.0, width, 40.0));
    field->awakeFromNib();
    field->setBezeled(false);
    field->setDrawsBackground(false);
    field->setAttributedStringValue(linkedText());
    return field;
}

Ref<NSTextField> textField(const char* words, bool enabled)
{
    Ref<NSTextField> field = make<NSTextField>()->initWithFrame(NSMakeRect(0.0, 0.0, 140.0, 22.0));
    field->setStringValue(text(words));
    field->setEnabled(enabled);
    return field;
}

Ref<ZuComboBox> comboBox(const char* chosen)
{
    Ref<ZuComboBox> view = make<ZuComboBox>()->initWithFrame(kComboBoxFrame);
    for (const char* album : {"Lake in spring", "Sunset"}) {
        view->values_()->addObject(text(album));
    }
    view->reloadData();
    view->setStringValue(text(chosen));
    return view;
}

Ref<ZuComboBox> disabledComboBox()
{
    Ref<ZuComboBox> view = comboBox("Sunset");
    view->setEnabled(false);
    return view;
}

Ref<ZuMultiSelectComboBox> multiSelectComboBox()
{
    Ref<ZuMultiSelectComboBox> view = make<ZuMultiSelectComboBox>()->initWithFrame(kComboBoxFrame);
    view->setEditable(false);
    for (const char* kind : {"Contacts", "Messages"}) {
        const Ref<ZuMultiSelectComboBoxData> choice = make<ZuMultiSelectComboBoxData>();
        choice->setValue(text(kind));
        choice->setIsCheck(true);
        view->values_()->addObject(choice);
    }
    view->setCheckValue();
    return view;
}

// Tables and outlines keep neither those who answer for them alive nor what their cells borrow.

/// Shows a table, and keeps the one who answers for it alive.
class KeepingScrollView final : public NSScrollView
{
public:
    explicit KeepingScrollView(Ref<NSObject> owner) : _owner(std::move(owner)) {}

private:
    Ref<NSObject> _owner;
};

Ref<NSImage> checkImage(const char* name)
{
    const Ref<NSString> path =
        NSBundle::mainBundle()->pathForResource_ofType(text(name).get(), text("png").get());
    return make<NSImage>()->initByReferencingFile(path.get());
}

constexpr double kRowHeight = 24.0;

void addColumn(NSTableView& table, const char* title, double width, Ref<NSCell> cell)
{
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setHeaderCell(make<ZuTableHeaderCell>());
    column->setTitle(text(title));
    column->setWidth(width);
    column->setDataCell(std::move(cell));
    table.addTableColumn(column);
}

/// The files of a phone, of which some are checked and one cannot be. Of presses it need not hear in a
/// picture.
class Files final : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    Ref<NSView> table()
    {
        const Ref<ZuTableCheckImageCell> checks = make<ZuTableCheckImageCell>();
        checks->awakeFromNib();
        checks->loadImage_withSecond_withThird(_unchecked.get(), _checked.get(), _disabled.get());
        const Ref<ZuImageCell> pictures = make<ZuImageCell>();
        pictures->setImageAlignment(NSImageAlignment::Left);
        pictures->setOffset(36);

        const Ref<NSTableView> table = make<NSTableView>();
        table->setRowHeight(kRowHeight);
        table->setFont(_font);
        addColumn(*table, "", 150.0, checks);
        addColumn(*table, "Album", 180.0, pictures);
        addColumn(*table, "Size", 110.0, make<ZuCenterTextFieldCell>());
        const Ref<ZuCheckTableHeaderView> header =
            make<ZuCheckTableHeaderView>()->initWithFrame(table->headerView()->frame());
        header->awakeFromNib();
        table->setHeaderView(header);
        table->setDelegate(this);
        table->setDataSource(this);
        table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1).get(), false);

        const Ref<KeepingScrollView> view = make<KeepingScrollView>(this);
        view->initWithFrame(NSMakeRect(0.0, 0.0, 440.0, 119.0));
        view->setDocumentView(table);
        return view;
    }

    std::int64_t numberOfRowsInTableView(NSTableView* /*view*/) override
    {
        return static_cast<std::int64_t>(_files.size());
    }
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                      NSTableColumn* /*column*/, std::int64_t row) override
    {
        const File& file = _files[static_cast<std::size_t>(row)];
        cell->setStringValue(file.size);
        if (auto* const check = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
            check->setStringValue(file.name);
            check->setIsChecked(file.checked ? 1 : 0);
            check->setEnabled(file.enabled);
        } else if (auto* const picture = dynamic_cast<ZuImageCell*>(cell)) {
            picture->setImage(file.picture);
            picture->setDescription(file.album.get());
        }
    }

private:
    struct File {
        Ref<NSString> name;
        Ref<NSImage> picture;
        Ref<NSString> album;
        Ref<NSString> size;
        bool checked;
        bool enabled;
    };

    Ref<NSImage> _unchecked = checkImage("content-check-no");
    Ref<NSImage> _checked = checkImage("content-check-yes");
    Ref<NSImage> _disabled = patch("disabled", {16.0, 16.0}, rgb(220, 223, 227));
    Ref<NSFont> _font = NSFont::fontWithName_size("Arial", 12.0);
    std::array<File, 4> _files{{
        {text("IMG_0012.jpg"), patch("lake", {28.0, 18.0}, rgb(70, 140, 190)), text("Lake in spring"),
         text("2.4 MB"), true, true},
        {text("IMG_0013.jpg"), patch("lake", {28.0, 18.0}, rgb(90, 160, 180)), text("Lake in spring"),
         text("3.1 MB"), false, true},
        {text("IMG_0020.jpg"), patch("sunset", {28.0, 18.0}, rgb(224, 130, 60)), text("Sunset"),
         text("1.9 MB"), true, true},
        {text("clip.mov"), patch("clip", {28.0, 18.0}, rgb(120, 110, 150)), text("Videos"), text("48 MB"),
         false, false},
    }};
};

/// What is on a phone, as a tree.
class PhoneTree final : public NSObject, public NSOutlineViewDataSource, public NSOutlineViewDelegate
{
public:
    /// `room` is what is kept free left of the logos, in points.
    explicit PhoneTree(std::int64_t room) : _room(room)
    {
        const Ref<ZuOutlineItem> phone = add(*_root, "Phone", -1, rgb(82, 110, 160));
        add(*phone, "Contacts", 214, rgb(52, 152, 83));
        const Ref<ZuOutlineItem> photos = add(*phone, "Photos", 59, rgb(224, 130, 60));
        add(*photos, "Lake in spring", 42, rgb(70, 140, 190));
        add(*photos, "Sunset", 17, rgb(224, 64, 48))->setIsChecked(0);
    }

    Ref<NSView> outline(Ref<NSCell> cell)
    {
        cell->setFont(NSFont::fontWithName_size("Arial", kNameSize));
        const Ref<ZuOutlineView> outline = make<ZuOutlineView>();
        outline->setRowHeight(kRowHeight);
        outline->setHeaderView(nullptr);
        outline->setBackgroundImage_(_background.get()); // which only an application draws
        addColumn(*outline, "", kWidth, std::move(cell));
        outline->setDelegate(this);
        outline->setDataSource(this);
        const Ref<ZuOutlineItem> phone = _root->childAtIndex(0);
        outline->expandItem(phone.get());
        outline->expandItem(phone->childAtIndex(1).get());
        outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1).get(), false);

        const Ref<KeepingScrollView> view = make<KeepingScrollView>(this);
        view->initWithFrame(NSMakeRect(0.0, 0.0, kWidth, 120.0));
        view->setDocumentView(outline);
        return view;
    }

    std::int64_t outlineView_numberOfChildrenOfItem(NSOutlineView* /*view*/, NSObject* item) override
    {
        return itemOf(item).numberOfChildren();
    }
    Ref<NSObject> outlineView_child_ofItem(NSOutlineView* /*view*/, std::int64_t index,
                                           NSObject* item) override
    {
        return itemOf(item).childAtIndex(static_cast<std::uint64_t>(index));
    }
    bool outlineView_isItemExpandable(NSOutlineView* /*view*/, NSObject* item) override
    {
        return itemOf(item).numberOfChildren() > 0;
    }
    void outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* /*view*/, NSCell* cell,
                                                         NSTableColumn* /*column*/, NSObject* item) override
    {
        ZuOutlineItem& shown = itemOf(item);
        cell->setStringValue(shown.name());
        cell->setImage(shown.isChecked() != 0 ? _checked : _unchecked);
        if (auto* const row = dynamic_cast<ZuCheckImageCell*>(cell)) {
            row->setItem(&shown);
        } else if (auto* const textRow = dynamic_cast<ZuOutlineImageCell*>(cell)) {
            textRow->setItem(&shown);
        }
    }

private:
    ZuOutlineItem& itemOf(NSObject* item) const
    {
        return item != nullptr ? dynamic_cast<ZuOutlineItem&>(*item) : *_root;
    }
    Ref<ZuOutlineItem> add(ZuOutlineItem& parent, const char* name, std::int64_t number,
                           Ref<NSColor> color) const
    {
        constexpr std::int64_t kLevel = 16;  // of the outline
        constexpr std::int64_t kOutdent = 8; // of the cells
        std::int64_t level = 0;
        for (Ref<ZuOutlineItem> above = parent.parent(); above; above = above->parent()) {
            ++level;
        }
        Ref<ZuOutlineItem> item = make<ZuOutlineItem>()->init();
        item->setName(text(name));
        item->setNumber(number);
        item->setLogo(patch("logo", {14.0, 14.0}, std::move(color)));
        item->setIndent_item(level * kLevel + kOutdent + _room);
        item->setGap_logo_to_text(6);
        parent.addChild(item);
        return item;
    }

    static constexpr double kWidth = 220.0;
    static constexpr double kNameSize = 14.0; // with which names stand on one line with the counts

    std::int64_t _room;
    Ref<ZuOutlineItem> _root = make<ZuOutlineItem>()->init();
    Ref<NSImage> _unchecked = checkImage("content-check-no");
    Ref<NSImage> _checked = checkImage("content-check-yes");
    Ref<NSImage> _background = patch("background", {16.0, 16.0}, rgb(240, 240, 240));
};

/// Messages, one of which could not be sent.
class Messages final : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    Messages()
    {
        _messages[2].data->setCheck(text("✓"));
        _messages[4].data->setProgressBarDouble(40.0);
    }

    Ref<NSView> table(Ref<NSCell> cell)
    {
        const Ref<NSTableView> table = make<NSTableView>();
        table->setRowHeight(kMessageHeight);
        table->setHeaderView(nullptr);
        addColumn(*table, "", kWidth, std::move(cell));
        table->setDelegate(this);
        table->setDataSource(this);
        table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(2).get(), false);

        const Ref<KeepingScrollView> view = make<KeepingScrollView>(this);
        view->initWithFrame(
            NSMakeRect(0.0, 0.0, kWidth, kMessageHeight * static_cast<double>(_messages.size())));
        view->setDocumentView(table);
        return view;
    }
    /// With names that can be edited, and the field over the first one in which that is done.
    Ref<NSView> tableWithEditedName()
    {
        const Ref<PelSmsTableCheckImageCell> cell = make<PelSmsTableCheckImageCell>();
        cell->setEditNameFlag(true);
        Ref<NSView> view = table(cell);
        const Ref<NSTextField> field = textField("Anna", true);
        field->setFrame(NSMakeRect(40.0, 0.0, 140.0, 22.0));
        dynamic_cast<NSScrollView&>(*view).documentView()->addSubview(field);
        return view;
    }

    std::int64_t numberOfRowsInTableView(NSTableView* /*view*/) override
    {
        return static_cast<std::int64_t>(_messages.size());
    }
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                      NSTableColumn* /*column*/, std::int64_t row) override
    {
        const Message& message = _messages[static_cast<std::size_t>(row)];
        const Ref<NSString> name = message.data->contactsName();
        cell->setStringValue(name ? name : message.data->phoneNumber());
        if (auto* const textRow = dynamic_cast<ZuSmsImageCell*>(cell)) {
            fill(*textRow, message);
        } else if (auto* const button = dynamic_cast<PelSmsTableCheckImageCell*>(cell)) {
            fill(*button, message);
        }
    }

private:
    struct Message {
        Ref<PelSMSTableData> data; // keeps the picture alive, which cells do not
        std::int32_t sentSmsType = 0;
        bool isTitleCentered = false;
    };

    template <class Cell> static void fill(Cell& cell, const Message& message)
    {
        cell.setFrontImage(message.data->image().get());
        const Ref<NSString> check = message.data->check();
        const double progress = message.data->progressBarDouble();
        const std::string words =
            (check ? check->UTF8String() + ' ' : "") + message.data->title()->UTF8String() +
            (progress < kComplete ? " (" + std::to_string(static_cast<int>(progress)) + " %)" : "");
        cell.setButtonContents(text(words.c_str()));
        cell.setSentSmsType(message.sentSmsType);
        cell.setIsTitleAlignCenter(message.isTitleCentered);
    }

    static Ref<PelSMSTableData> message(const char* name, const char* words, Ref<NSImage> picture)
    {
        Ref<PelSMSTableData> data = make<PelSMSTableData>()->init();
        data->setContactsName(text(name));
        data->setPhoneNumber(text("+49 30 1234567"));
        data->setTitle(text(words));
        data->setProgressBarDouble(kComplete);
        data->setImage(std::move(picture));
        return data;
    }

    static constexpr double kWidth = 340.0;
    static constexpr double kMessageHeight = 48.0;
    static constexpr std::int32_t kSendingFailed = 5;
    static constexpr double kComplete = 100.0; // per cent that are loaded

    std::array<Message, 5> _messages{{
        {message("Anna", "See you at the station at half past eight, I have the tickets for all of us.",
                 patch("face", {40.0, 40.0}, rgb(70, 140, 190)))},
        {message("Ben", "Can you bring the camera?", patch("face", {40.0, 40.0}, rgb(52, 152, 83))),
         kSendingFailed},
        {message("Clara", "", patch("face", {28.0, 28.0}, rgb(224, 130, 60))), 0, true},
        {message(nullptr, "Your parcel has arrived.", nullptr)},
        {message("Dora", "A tall picture.", patch("face", {30.0, 90.0}, rgb(120, 110, 150)))},
    }};
};

} // namespace

std::vector<Scene> scenes()
{
    const Ref<NSColor> grey = rgb(220, 220, 220);
    const Ref<NSColor> accent = rgb(32, 186, 234);
    return {
        {"ZuToolButton",
         {{"normal", toolButton()},
          {"hover", toolButton({kEnter})},
          {"pressed", toolButton({kEnter, kPress})},
          {"nothing but a name", plainToolButton()}}},
        {"ZuSimpleButton",
         {{"normal", simpleButton("Import")},
          {"hover", simpleButton("Import", {kEnter})},
          {"pressed", simpleButton("Import", {kEnter, kPress})},
          {"disabled", disabledButton()},
          {"image", imageButton()},
          {"image, hover", imageButton({kEnter})},
          {"round, other colours", roundButton()},
          {"made in code", bareButton()}}},
        {"ZuProgressView",
         {{"nothing known", progressView(0.0, 0.0)},
          {"a quarter", progressView(25.0, 100.0)},
          {"all", progressView(100.0, 100.0)},
          {"beyond", progressView(150.0, 100.0)},
          {"round", progressView(60.0, 100.0, 5.0)}}},
        {"ZuLine",
         {{"horizontal", line({100.0, 2.0}, ZuLine::kHorizontal, ZuLine::kSolid)},
          {"horizontal, dashed", line({100.0, 2.0}, ZuLine::kHorizontal, ZuLine::kDashed)},
          {"vertical", line({1.0, 40.0}, ZuLine::kVertical, ZuLine::kSolid)},
          {"vertical, dashed", line({1.0, 40.0}, ZuLine::kVertical, ZuLine::kDashed)},
          {"coloured", colored(line({100.0, 2.0}, ZuLine::kHorizontal, ZuLine::kSolid))}}},
        {"ZuBox", {{"awake", box(nullptr, 1, grey)}, {"title, other line", box("Photos", 6, accent)}}},
        {"ZuBorderView",
         {{"origin below", marked(borderView(1.0, NSColor::blackColor()))},
          {"flipped", flippedBorderView()},
          {"wide", borderView(6.0, accent)},
          {"border, shadow", shadowOfBorder()},
          {"face, shadow", shadowOfFace()}}},
        {"ZuFlippedView", {{"origin above", flippedView()}}},
        {"ZuComboBox", {{"a text", comboBox("Sunset")}, {"disabled", disabledComboBox()}}},
        {"ZuMultiSelectComboBox", {{"two checked", multiSelectComboBox()}}},
        {"WyClickableURLTextField",
         {{"WyClickableURLTextField", linkField<WyClickableURLTextField>(180.0)},
          {"wrapped", linkField<WyClickableURLTextField>(110.0)},
          {"ZuHyperlinkTextField", linkField<ZuHyperlinkTextField>(180.0)},
          {"NSTextField", textField("Anna Brandt", true)},
          {"NSTextField, disabled", textField("Anna Brandt", false)}}},
        {"ZuTableCornerView", {{"corner", cornerView()}}},
        {"ZuCheckTableHeaderView", {{"over a table, a row of which is selected", make<Files>()->table()}}},
        {"ZuOutlineView",
         {{"ZuOutlineImageCell", make<PhoneTree>(0)->outline(make<ZuOutlineImageCell>())},
          {"ZuCheckImageCell", make<PhoneTree>(22)->outline(make<ZuCheckImageCell>())}}},
        {"ZuSmsImageCell",
         {{"ZuSmsImageCell", make<Messages>()->table(make<ZuSmsImageCell>())},
          {"PelSmsTableCheckImageCell", make<Messages>()->table(make<PelSmsTableCheckImageCell>())},
          {"the same, while names are edited", make<Messages>()->tableWithEditedName()}}},
    };
}

Ref<NSView> look(std::string_view control, std::string_view name)
{
    for (const Scene& scene : scenes()) {
        for (const Look& each : scene.looks) {
            if (scene.control == control && each.name == name) {
                return each.view;
            }
        }
    }
    return nullptr;
}
