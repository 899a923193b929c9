#include "platform/appkit/NSNib.h"

#include "platform/appkit/NSBox.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableHeaderCell.h"
#include "platform/appkit/NSTableHeaderView.h"
#include "platform/appkit/NSTableView.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"
#include "window/Classes.h"
#include "window/DragDropView.h"
#include "window/ZuSimpleButton.h"
#include "window/ZuSmsImageCell.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QButtonGroup>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeView>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace
{

std::vector<std::string> awakened;

/// Writes down what it finds when it is told to awake.
class Sleeper : public NSView
{
public:
    Ref<NSString> name() const { return _name.get(); }
    void setName(Ref<NSString> name) { _name.set(name); }
    Ref<NSView> partner() const { return _partner.get(); }
    void setPartner(NSView* partner) { _partner = partner; }

    void awakeFromNib() override
    {
        const Ref<NSView> partner = _partner.get();
        awakened.push_back(utf8(name()) + " in " + (superview() != nullptr ? "a view" : "nothing") +
                           " with " + std::to_string(subviews().size()) + " beside " +
                           (partner ? NSStringFromRect(partner->frame()) : "nobody"));
    }

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    CopyProperty<NSString> _name;
    Weak<NSView> _partner;
};

constexpr std::array kSleeperProperties{
    property<&Sleeper::name, &Sleeper::setName>("name"),
    property<&Sleeper::partner, &Sleeper::setPartner>("partner"),
};

constinit const ClassTable Sleeper::table{
    "Sleeper", &NSView::table, kSleeperProperties, {}, makeObject<Sleeper>};

const ClassTable& Sleeper::classTable() const
{
    return table;
}

/// Has outlets, and takes actions.
class Owner : public ActionTarget
{
public:
    Ref<NSView> view() const { return _view; }
    void setView(Ref<NSView> view) { _view = std::move(view); }
    Ref<ZuToolButton> misfit() const { return nullptr; }
    void setMisfit(Ref<ZuToolButton> /*button*/) {}
    Ref<ZuToolButton> button() const { return _button; }
    void setButton(Ref<ZuToolButton> button) { _button = std::move(button); }

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

private:
    Ref<NSView> _view;
    Ref<ZuToolButton> _button;
};

constexpr std::array kOwnerProperties{
    property<&Owner::view, &Owner::setView>("view"),
    property<&Owner::misfit, &Owner::setMisfit>("misfit"),
    property<&Owner::button, &Owner::setButton>("button"),
};
constexpr std::array kOwnerSelectors{selector<&ActionTarget::pushed>(ActionTarget::kAction.name)};

constinit const ClassTable Owner::table{"Owner", &NSObject::table, kOwnerProperties, kOwnerSelectors};

std::string widget(const std::string& className, const std::string& name, const std::string& content = "")
{
    return "<widget class='" + className + "' name='" + name + "'>" + content + "</widget>";
}

std::string set(const std::string& name, const std::string& value)
{
    return "<property name='" + name + "'>" + value + "</property>";
}

std::string texts(const std::string& name, const std::string& text)
{
    return set(name, "<string>" + text + "</string>");
}

std::string geometry(int x, int y, int width, int height)
{
    const auto part = [](const std::string& name, int number) {
        return "<" + name + ">" + std::to_string(number) + "</" + name + ">";
    };
    return set("geometry", "<rect>" + part("x", x) + part("y", y) + part("width", width) +
                               part("height", height) + "</rect>");
}

/// A layout without room between what it lays out.
std::string layout(const std::string& className, const std::string& items)
{
    std::string margins;
    for (const char* const side : {"leftMargin", "topMargin", "rightMargin", "bottomMargin", "spacing"}) {
        margins += set(side, "<number>0</number>");
    }
    return "<layout class='" + className + "'>" + margins + items + "</layout>";
}

std::string item(const std::string& content, const std::string& place = "")
{
    return "<item " + place + ">" + content + "</item>";
}

std::string size(const std::string& name, int width, int height)
{
    return set(name, "<size><width>" + std::to_string(width) + "</width><height>" + std::to_string(height) +
                         "</height></size>");
}

/// The frames of a view's subviews, and of theirs in brackets.
std::string frames(const NSView& view)
{
    std::string all;
    for (const Ref<NSView>& subview : view.subviews()) {
        const std::string inside = frames(*subview);
        all += (all.empty() ? "" : " ") + NSStringFromRect(subview->frame()) +
               (inside.empty() ? "" : " [" + inside + "]");
    }
    return all;
}

class NSNibTest : public testing::Test
{
protected:
    Ref<NSNib> nibWith(const std::string& form) const
    {
        return nibOf("<ui version='4.0'>\n" + form + "</ui>");
    }
    Ref<NSNib> nibOf(const std::string& file) const
    {
        static constexpr std::array kOwn{&Sleeper::table, &Owner::table};
        folder.write("form.ui", file);
        Ref<NSNib> nib =
            make<NSNib>()->initWithContentsOfFile(text((folder.path() / "form.ui").c_str()).get());
        nib->addClasses(kWindowClasses);
        nib->addClasses(kOwn);
        return nib;
    }

    /// What a form becomes; `said` is what is reported of it, line and problem.
    Ref<NSView> made(const std::string& form, NSObject* owner = nullptr)
    {
        return made(*nibWith(form), owner);
    }
    Ref<NSView> made(NSNib& nib, NSObject* owner = nullptr)
    {
        testing::internal::CaptureStderr();
        Ref<NSView> view = nib.instantiateWithOwner(owner);
        said = testing::internal::GetCapturedStderr();
        const std::string start = "instantiateWithOwner: " + (folder.path() / "form.ui").string() + ':';
        for (auto found = said.find(start); found != std::string::npos; found = said.find(start)) {
            said.erase(found, start.size());
        }
        return view;
    }

    TemporaryFolder folder;
    std::string said;
};

TEST_F(NSNibTest, SetsPropertiesOfEveryKind)
{
    const QImage picture(2, 1, QImage::Format_RGB32);
    picture.save(QString::fromStdString(folder.path() / "picture.png"));
    const Ref<NSView> top = made(widget(
        "NSView", "top",
        widget("NSBox", "box",
               set("fillColor", "<color alpha='51'><red>255</red><green>0</green><blue>102</blue></color>") +
                   set("borderColor", "<color><red>0</red><green>0</green><blue>0</blue></color>") +
                   set("borderWidth", "<double>2.5</double>") + set("cornerRadius", "<number>3</number>") +
                   set("transparent", "<bool>true</bool>")) +
            widget("NSButton", "button",
                   texts("title", "Contacts") + set("enabled", "<bool>false</bool>") +
                       set("visible", "<bool>false</bool>") + texts("accessibleName", "People") +
                       texts("toolTip", "&lt;b>") + texts("image", "picture.png") +
                       set("alternateImage",
                           "<iconset><normaloff>calendar@2x.png</normaloff>other.png</iconset>")) +
            widget("NSTextField", "field",
                   set("font", "<font><family>Arial</family><pointsize>17</pointsize><bold>true</bold>"
                               "</font>") +
                       set("stringValue", "<cstring>text</cstring>") +
                       // The rest of what widgets have means nothing here.
                       set("styleSheet", "<string>color: red</string>") + set("palette", "<palette/>") +
                       texts("whatsThis", "It"))));
    EXPECT_EQ(said, "");
    ASSERT_NE(top, nullptr);
    ASSERT_EQ(top->subviews().size(), 3U);
    const auto& box = dynamic_cast<NSBox&>(*top->subviews()[0]);
    EXPECT_EQ(box.fillColor()->description(), "sRGB(1, 0, 0.4, 0.2)");
    EXPECT_EQ(box.borderColor()->description(), "sRGB(0, 0, 0, 1)");
    EXPECT_EQ(box.borderWidth(), 2.5);
    EXPECT_EQ(box.cornerRadius(), 3.0);
    EXPECT_TRUE(box.isTransparent());
    const auto& button = dynamic_cast<NSButton&>(*top->subviews()[1]);
    EXPECT_EQ(utf8(button.title()), "Contacts");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.isHidden());
    EXPECT_EQ(utf8(button.accessibilityLabel()), "People");
    EXPECT_EQ(utf8(button.toolTip()), "<b>");
    ASSERT_NE(button.image(), nullptr);
    EXPECT_EQ(button.image()->size(), (NSSize{2.0, 1.0}));
    EXPECT_NE(button.alternateImage(), nullptr); // of the main bundle
    auto& field = dynamic_cast<NSTextField&>(*top->subviews()[2]);
    EXPECT_EQ(utf8(field.stringValue()), "text");
    EXPECT_EQ(utf8(field.font()->fontName()), "Arial Bold");
    EXPECT_EQ(field.font()->pointSize(), 17.0);
    EXPECT_EQ(field.widget()->styleSheet(), "");

    // A file has of a font only what was changed.
    const Ref<NSView> italic =
        made(widget("NSTextField", "", set("font", "<font><bold>true</bold><italic>true</italic></font>")));
    const Ref<NSFont> font = dynamic_cast<NSTextField&>(*italic).font();
    EXPECT_EQ(utf8(font->fontName()), "Arial Bold Italic");
    EXPECT_EQ(font->pointSize(), NSFont::kDefaultSize);

    // So it is with a plain widget at the top, of which the toolkit takes the rest.
    const Ref<NSView> plain =
        made(widget("QWidget", "",
                    texts("toolTip", "&lt;b>") + texts("accessibleName", "All") +
                        set("visible", "<bool>false</bool>") + set("enabled", "<bool>false</bool>")));
    EXPECT_EQ(utf8(plain->toolTip()), "<b>");
    EXPECT_EQ(utf8(plain->accessibilityLabel()), "All");
    EXPECT_TRUE(plain->isHidden());
    EXPECT_FALSE(plain->widget()->isEnabled());
}

TEST_F(NSNibTest, LeavesOtherWidgetsToTheToolkit)
{
    const auto grouped = [](const std::string& group) {
        return widget("QRadioButton", "", "<attribute name='buttonGroup'>" + group + "</attribute>");
    };
    const Ref<NSView> top =
        made(widget("NSView", "", widget("Line", "line") + grouped("<string>group</string>") + grouped("")) +
             "<buttongroups><buttongroup name='group'/></buttongroups>");
    EXPECT_EQ(said, "");
    EXPECT_NE(top->widget()->findChild<QFrame*>("line"), nullptr);
    EXPECT_EQ(top->widget()->findChild<QButtonGroup*>("group")->buttons().size(), 1);
    made(widget("QOpenGLWidget", ""));
    EXPECT_EQ(said, "2: QOpenGLWidget \"\": there is no such class\n");
}

TEST_F(NSNibTest, LeavesWhatTheFileDoesNotSet)
{
    const Ref<NSView> top = made(widget("NSView", "top", widget("NSButton", "button")));
    const auto& button = dynamic_cast<NSButton&>(*top->subviews().at(0));
    EXPECT_TRUE(button.isEnabled());
    EXPECT_FALSE(button.isHidden());
    EXPECT_EQ(button.toolTip(), nullptr);
    EXPECT_EQ(button.title(), nullptr);
    EXPECT_EQ(button.target(), nullptr);
}

TEST_F(NSNibTest, ReportsWhatCannotBeSetAndGoesOn)
{
    const Ref<Owner> owner = make<Owner>();
    struct {
        std::string property;
        std::string problem;
    } const cases[] = {
        {texts("colour", "red"), "colour: there is no such property"},
        {set("title", "<number>1</number>"), "title: the value does not fit"},
        {set("enabled", "<string>yes</string>"), "enabled: \"yes\" does not fit"},
        {set("enabled", "<bool>yes</bool>"), "enabled: the value cannot be read"},
        {set("enabled", ""), "enabled: the value cannot be read"},
        {set("enabled", "<number>2147483648000000000000</number>"), "enabled: the value cannot be read"},
        {set("title", "<brush/>"), "title: the value cannot be read"},
        {set("image", "<pixmap>nothing.png</pixmap>"), "image: the value cannot be read"},
        {set("image", "<pixmap>/dev/zero</pixmap>"), "image: the value cannot be read"},
        {set("image", "<color><red>256</red><green>0</green><blue>0</blue></color>"),
         "image: the value cannot be read"},
        {texts("image", "wrong"), "image: the object \"wrong\" does not fit"},
        {texts("target", "nobody"), "target: there is no object \"nobody\""},
        {set("target", "<number>1</number>"), "target: the value does not fit"},
        {texts("action", "pushed:"), "action: \"pushed:\" does not fit"}, // without a target
        {texts("target", "owner") + texts("action", "pulled:"), "action: \"pulled:\" does not fit"},
        {texts("a&#10;b&#x9b;", ""), "a?b?: there is no such property"},
    };
    for (const auto& [property, problem] : cases) {
        const Ref<NSView> top =
            made(widget("NSView", "top",
                        widget("NSButton", "wrong", property + texts("alternateTitle", "behind"))),
                 owner.get());
        EXPECT_EQ(said, "2: NSButton \"wrong\": " + problem + "\n");
        EXPECT_EQ(utf8(dynamic_cast<NSButton&>(*top->subviews().at(0)).alternateTitle()), "behind");
    }
}

TEST_F(NSNibTest, AwakesViewsOnceWhenAllAreConnected)
{
    awakened.clear();
    const Ref<NSView> top =
        made(widget("Sleeper", "top",
                    geometry(0, 0, 200, 100) + texts("name", "outer") + texts("partner", "inner") +
                        widget("Sleeper", "inner",
                               geometry(10, 20, 30, 40) + texts("partner", "top") + texts("name", "inner"))));
    EXPECT_EQ(said, "");
    EXPECT_EQ(awakened, (std::vector<std::string>{"inner in a view with 0 beside {{0, 0}, {200, 100}}",
                                                  "outer in nothing with 1 beside {{10, 40}, {30, 40}}"}));
}

TEST_F(NSNibTest, ConnectsTargetsAndOutletsByName)
{
    const Ref<Owner> owner = make<Owner>();
    const Ref<ActionTarget> other = make<ActionTarget>();
    const Ref<NSNib> nib = nibWith(
        widget("NSView", "view",
               widget("ZuToolButton", "button", texts("action", "pushed:") + texts("target", "owner")) +
                   widget("NSTextField", "field", texts("delegate", "field") + texts("target", "other")) +
                   widget("NSTextField", "misfit") + widget("QLabel", "label")));
    nib->setObject_forName(other, "other");
    const Ref<NSView> top = made(*nib, owner.get());
    EXPECT_EQ(said, "2: NSTextField \"misfit\": it does not fit the owner's property of that name\n");
    EXPECT_EQ(owner->view(), top);
    ASSERT_NE(owner->button(), nullptr);
    EXPECT_TRUE(owner->button()->valueForKey("action")->isEqual(text("pushed:").get()));
    owner->button()->performClick(nullptr);
    EXPECT_EQ(owner->senders, std::vector<NSObject*>{owner->button().get()});
    const auto& field = dynamic_cast<NSTextField&>(*top->subviews()[1]);
    EXPECT_EQ(field.delegate(), &field);
    EXPECT_EQ(field.target(), other);

    nib->setObject_forName(nullptr, "other");
    made(*nib);
    EXPECT_EQ(said, "2: ZuToolButton \"button\": action: \"pushed:\" does not fit\n"
                    "2: ZuToolButton \"button\": target: there is no object \"owner\"\n"
                    "2: NSTextField \"field\": target: there is no object \"other\"\n");
}

TEST_F(NSNibTest, TakesTheFirstObjectOfAName)
{
    const Ref<Owner> owner = make<Owner>();
    const Ref<NSView> top =
        made(widget("NSView", "view",
                    widget("ZuToolButton", "button") + widget("ZuToolButton", "button") +
                        widget("NSView", "") + widget("NSView", "") + widget("NSView", "owner")),
             owner.get());
    EXPECT_EQ(said, "2: ZuToolButton \"button\": another object has that name\n"
                    "2: NSView \"owner\": another object has that name\n");
    EXPECT_EQ(owner->button(), top->subviews().at(0));
}

TEST_F(NSNibTest, PutsAPlainViewInPlaceOfAnUnknownClass)
{
    const Ref<NSView> top = made(widget(
        "NSView", "top",
        widget("Zu&#10;Nothing", "x", geometry(1, 2, 3, 4) + widget("NSBox", "box") + widget("Owner", ""))));
    EXPECT_EQ(said, "2: Zu?Nothing \"x\": there is no such class\n"
                    "2: Owner \"\": there is no such class\n"); // which nobody can make
    ASSERT_EQ(top->subviews().size(), 1U);
    EXPECT_EQ(top->subviews()[0]->classTable().name, "NSView");
    EXPECT_EQ(top->subviews()[0]->subviews().at(0)->classTable().name, "NSBox");
}

TEST_F(NSNibTest, KnowsEveryViewAndCellThatThereIs)
{
    std::string form;
    std::vector<std::string> names;
    for (const ClassTable* const table : kWindowClasses) {
        names.emplace_back(table->name);
        EXPECT_EQ(&table->factory()->classTable(), table) << table->name;
    }
    for (const auto& file : std::filesystem::directory_iterator(WINDOW_SOURCES)) {
        std::ifstream stream(file.path());
        const std::string code{std::istreambuf_iterator<char>(stream), {}};
        if (file.path().extension() == ".h" && code.find("static const ClassTable table") != code.npos &&
            code.find(": public NSObject") == code.npos) {
            EXPECT_EQ(std::ranges::count(names, file.path().stem().string()), 1) << file.path();
        }
    }
    for (const char* const name : {"NSView", "NSBox", "NSButton", "NSComboBox", "NSControl", "NSScrollView",
                                   "NSTextField", "ZuLine", "Sleeper"}) {
        const Ref<NSView> top = made(widget(name, ""));
        EXPECT_EQ(said, "");
        EXPECT_EQ(top->classTable().name, name);
    }
}

TEST_F(NSNibTest, PutsTablesTogether)
{
    const Ref<NSView> top = made(
        widget("NSView", "top",
               widget("NSScrollView", "scroller",
                      geometry(0, 0, 300, 200) +
                          widget("NSTableView", "table",
                                 texts("delegate", "top") + set("rowHeight", "<number>30</number>") +
                                     widget("ZuCheckTableHeaderView", "header", geometry(0, 0, 100, 40)) +
                                     widget("NSTableColumn", "first",
                                            set("width", "<number>50</number>") + texts("identifier", "1") +
                                                texts("title", "Name") + widget("ZuTableHeaderCell", "") +
                                                widget("ZuSmsImageCell", "cell",
                                                       set("isTitleAlignCenter", "<bool>true</bool>"))) +
                                     widget("NSTableColumn", "second")))));
    EXPECT_EQ(said, "");
    auto& scroller = dynamic_cast<NSScrollView&>(*top->subviews().at(0));
    const Ref<NSTableView> table = scroller.documentView();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(top->widget()->findChild<QWidget*>("table"), nullptr); // that kept its place
    EXPECT_EQ(table->delegate(), top);
    EXPECT_EQ(table->rowHeight(), 30.0);
    EXPECT_EQ(table->headerView()->classTable().name, "ZuCheckTableHeaderView");
    EXPECT_EQ(table->headerView()->frame().size, (NSSize{300.0, 40.0}));
    ASSERT_EQ(table->tableColumns().size(), 2U);
    const NSTableColumn& first = *table->tableColumns()[0];
    EXPECT_EQ(utf8(first.identifier()), "1");
    EXPECT_EQ(utf8(first.title()), "Name");
    EXPECT_EQ(first.headerCell()->classTable().name, "ZuTableHeaderCell");
    // Awake, the cell has its defaults.
    EXPECT_FALSE(dynamic_cast<ZuSmsImageCell&>(*first.dataCell()).isTitleAlignCenter());
    EXPECT_EQ(first.width(), 50.0);
}

TEST_F(NSNibTest, ReportsWhatIsInsideOfTheWrongThing)
{
    for (const auto& [inner, outer] : {std::pair("NSTableView", "NSView"),
                                       {"NSTableHeaderView", "NSScrollView"},
                                       {"NSTableColumn", "NSView"},
                                       {"ZuSmsImageCell", "NSButton"},
                                       {"NSButton", "NSTableView"},
                                       {"NSButton", "NSTableHeaderView"},
                                       {"NSButton", "NSTableColumn"}}) {
        const bool isInTable = std::string_view(outer).starts_with("NSTable");
        made(widget(
            "NSScrollView", "",
            widget(isInTable ? "NSTableView" : "NSView", "", widget(outer, "", widget(inner, "inner")))));
        EXPECT_NE(said.find(std::string("2: ") + inner +
                            " \"inner\": it cannot be inside of an object of class " + outer),
                  said.npos)
            << said;
    }
}

// Places

TEST_F(NSNibTest, HasFramesFollowTheLayouts)
{
    const std::string box = layout(
        "QHBoxLayout",
        item(widget("ZuFlippedView", "left",
                    size("minimumSize", 60, 0) + size("maximumSize", 60, 1000) +
                        layout("QGridLayout", item(widget("Sleeper", ""), "row='0' column='0'") +
                                                  item(widget("Sleeper", ""), "row='1' column='0'")))) +
            item("<spacer>" + set("orientation", "<enum>Qt::Horizontal</enum>") + "</spacer>") +
            item(widget("QWidget", "between",
                        size("minimumSize", 80, 0) + size("maximumSize", 80, 1000) +
                            widget("Sleeper", "", geometry(5, 6, 7, 8)))));
    const Ref<NSView> top = made(widget(
        "NSView", "top",
        geometry(0, 0, 200, 100) +
            layout("QVBoxLayout", item(widget("Sleeper", "line",
                                              size("minimumSize", 0, 10) + size("maximumSize", 1000, 10))) +
                                      item(box))));
    EXPECT_EQ(said, "");
    EXPECT_EQ(frames(*top),
              "{{0, 90}, {200, 10}} {{0, 0}, {60, 90}} [{{0, 0}, {60, 45}} {{0, 45}, {60, 45}}] "
              "{{125, 76}, {7, 8}}");
    const Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(
        NSMakeRect(0.0, 0.0, 300.0, 150.0), NSWindowStyleMaskResizable);
    window->setContentView(top);
    window->makeKeyAndOrderFront();
    QApplication::processEvents();
    EXPECT_EQ(frames(*top),
              "{{0, 140}, {300, 10}} {{0, 0}, {60, 140}} [{{0, 0}, {60, 70}} {{0, 70}, {60, 70}}] "
              "{{225, 126}, {7, 8}}");
}

TEST_F(NSNibTest, HasFramesFollowWidgetsOfTheToolkit)
{
    const auto title = [](const std::string& words) {
        return "<attribute name='title'><string>" + words + "</string></attribute>";
    };
    const Ref<NSView> top = made(widget(
        "NSView", "top",
        geometry(0, 0, 400, 300) +
            widget("QTabWidget", "tabs",
                   geometry(10, 20, 200, 100) +
                       widget("QWidget", "",
                              title("One") +
                                  layout("QVBoxLayout", item(widget("Sleeper", "", texts("name", "one"))))) +
                       widget("Sleeper", "", title("Two") + texts("name", "two"))) +
            widget(
                "QFrame", "outer",
                geometry(100, 200, 50, 50) +
                    widget("QFrame", "inner",
                           geometry(10, 10, 30, 30) +
                               widget("NSView", "",
                                      geometry(1, 2, 10, 10) + widget("NSView", "", geometry(3, 1, 2, 2))))) +
            widget("QScrollArea", "",
                   geometry(300, 0, 100, 100) + widget("Sleeper", "", geometry(0, 0, 300, 300)))));
    EXPECT_EQ(said, "");
    const Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(
        NSMakeRect(0.0, 0.0, 400.0, 300.0), NSWindowStyleMaskResizable);
    window->setContentView(top);
    window->makeKeyAndOrderFront();
    auto* const tabs = top->widget()->findChild<QTabWidget*>();
    EXPECT_EQ(tabs->tabText(1), "Two");
    for (int current : {0, 1}) {
        tabs->setCurrentIndex(current);
        QApplication::processEvents();
        for (const Ref<NSView>& view : {top->subviews()[0], top->subviews()[1]}) {
            const QWidget& shown = *view->widget();
            const bool isCurrent =
                utf8(dynamic_cast<Sleeper&>(*view).name()) == (current == 0 ? "one" : "two");
            EXPECT_EQ(shown.isVisible(), isCurrent);
            const QPoint place = shown.mapTo(top->widget(), QPoint());
            EXPECT_GT(place.y(), 20);
            EXPECT_EQ(view->frame(), NSMakeRect(place.x(), 300.0 - place.y() - shown.height(), shown.width(),
                                                shown.height()));
        }
    }
    const NSView& inFrame = *top->subviews()[2];
    EXPECT_EQ(inFrame.frame(), NSMakeRect(111.0, 78.0, 10.0, 10.0));
    EXPECT_EQ(frames(inFrame), "{{3, 7}, {2, 2}}");
    top->widget()->findChild<QWidget*>("outer")->move(0, 0);
    top->widget()->findChild<QWidget*>("inner")->move(0, 10);
    EXPECT_EQ(inFrame.frame(), NSMakeRect(1.0, 278.0, 10.0, 10.0));
    const NSPoint corner = inFrame.convertPoint_fromView({5.0, 299.0}, nullptr);
    EXPECT_EQ(corner, (NSPoint{4.0, 21.0}));
}

TEST_F(NSNibTest, PlacesViewsByTheirFramesWhereNothingElseDoes)
{
    const Ref<NSView> top = made(widget(
        "QWidget", "top",
        geometry(50, 60, 200, 100) +
            widget("NSView", "", geometry(10, 10, 50, 20) + widget("NSView", "", geometry(1, 2, 3, 4))) +
            widget("ZuFlippedView", "",
                   geometry(70, 10, 50, 20) + widget("NSView", "", geometry(1, 2, 3, 4))) +
            widget("QWidget", "", layout("QVBoxLayout", item(widget("NSView", "held"))))));
    EXPECT_EQ(top->classTable().name, "NSView");
    EXPECT_EQ(top->frame(), NSMakeRect(0.0, 0.0, 200.0, 100.0));
    EXPECT_EQ(frames(*top),
              "{{10, 70}, {50, 20}} [{{1, 14}, {3, 4}}] {{70, 70}, {50, 20}} [{{1, 2}, {3, 4}}] "
              "{{0, 70}, {100, 30}}");
    NSView& moved = *top->subviews()[0];
    moved.setFrame(NSMakeRect(0.0, 0.0, 20.0, 30.0));
    EXPECT_EQ(moved.widget()->geometry(), QRect(0, 70, 20, 30));
    top->setFrame(NSMakeRect(0.0, 0.0, 200.0, 110.0));
    EXPECT_EQ(moved.widget()->geometry(), QRect(0, 80, 20, 30));

    // What a layout holds stays there until it is taken away.
    const Ref<NSView> held = top->subviews()[2];
    const NSRect place = held->frame();
    held->setFrame(NSMakeRect(0.0, 0.0, 1.0, 1.0));
    EXPECT_EQ(held->frame(), place);
    moved.addSubview(held);
    held->setFrame(NSMakeRect(1.0, 2.0, 3.0, 4.0));
    EXPECT_EQ(held->frame(), NSMakeRect(1.0, 2.0, 3.0, 4.0));
    EXPECT_EQ(held->widget()->parentWidget(), moved.widget());
    EXPECT_EQ(held->widget()->geometry(), QRect(1, 24, 3, 4));
}

TEST_F(NSNibTest, TakesAnythingForTheTop)
{
    struct {
        std::string form;
        std::string frames;
    } const cases[] = {
        {widget("NSView", "", geometry(1, 2, 80, 40)), ""},
        {widget("NSView", "",
                layout("QVBoxLayout",
                       item(widget("NSView", "")) +
                           item("<spacer>" + size("sizeHint", 80, 40) +
                                set("sizeType", "<enum>QSizePolicy::Preferred</enum>") + "</spacer>"))),
         "{{0, 40}, {80, 0}}"},
        {widget("QDialog", "", geometry(1, 2, 80, 40) + widget("NSView", "", geometry(10, 0, 20, 30))),
         "{{10, 10}, {20, 30}}"},
        {widget("QMainWindow", "",
                geometry(1, 2, 80, 40) +
                    widget("QWidget", "", layout("QVBoxLayout", item(widget("NSView", "")))) +
                    widget("QMenuBar", "")),
         "{{0, 0}, {80, 40}}"},
    };
    for (const auto& [form, expected] : cases) {
        const Ref<NSView> top = made(form);
        EXPECT_EQ(said, "") << form;
        EXPECT_EQ(top->frame(), NSMakeRect(0.0, 0.0, 80.0, 40.0)) << form;
        EXPECT_EQ(frames(*top), expected) << form;
        EXPECT_EQ(top->superview(), nullptr);
        const Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(
            NSMakeRect(0.0, 0.0, 80.0, 40.0), NSWindowStyleMaskResizable);
        window->setContentView(top);
        window->makeKeyAndOrderFront();
        EXPECT_EQ(frames(*top), expected) << form;
    }
    made(widget("NSTableView", "", geometry(0, 0, 10, 10)));
    EXPECT_EQ(said, "2: NSTableView \"\": it cannot be inside of an object of class NSView\n");
}

TEST_F(NSNibTest, KeepsTheOrderOfTheFile)
{
    std::string form;
    for (const char* const name : {"a", "b", "c"}) {
        form += widget("NSTextField", name, texts("stringValue", name));
    }
    form += widget("QPushButton", "push") + widget("NSScrollView", "", widget("NSTableView", "table"));
    std::string stops;
    for (const char* const name : {"c", "table", "nothing", "push", "a", "b"}) {
        stops += "<tabstop>" + std::string(name) + "</tabstop>";
    }
    const Ref<NSView> top = made(widget("NSView", "", form + "<zorder>c</zorder><zorder>a</zorder>") +
                                 "<tabstops>" + stops + "</tabstops>");
    EXPECT_EQ(said, "");
    std::string order;
    for (const Ref<NSView>& view : top->subviews()) {
        const auto* const field = dynamic_cast<NSTextField*>(view.get());
        order += field != nullptr ? utf8(field->stringValue()) : "-";
    }
    EXPECT_EQ(order, "b-ca");
    const auto find = [&](const char* name) { return top->widget()->findChild<QWidget*>(name); };
    QWidget* taker = find("c")->findChild<QTextEdit*>();
    for (QWidget* const expected : {taker, static_cast<QWidget*>(top->widget()->findChild<QTreeView*>()),
                                    find("push"), static_cast<QWidget*>(find("a")->findChild<QTextEdit*>()),
                                    static_cast<QWidget*>(find("b")->findChild<QTextEdit*>()), taker}) {
        EXPECT_EQ(taker, expected);
        do {
            taker = taker->nextInFocusChain();
        } while ((taker->focusPolicy() & Qt::TabFocus) == 0);
    }
}

// Texts

TEST_F(NSNibTest, TranslatesWhatIsToBeTranslated)
{
    const Ref<NSNib> nib = nibWith(
        widget("NSView", "top",
               texts("windowTitle", "phone") + texts("toolTip", "") +
                   widget("NSButton", "button",
                          texts("title", "contacts &amp; more") +
                              set("toolTip", "<string notr='true'>tip</string>") + texts("target", "top") +
                              set("alternateTitle", "<cstring>raw</cstring>")) +
                   widget("QLabel", "label", texts("text", "a &amp; b")) +
                   widget("QLabel", "plain", set("text", "<string notr='true'>plain</string>"))));
    std::vector<std::string> asked;
    nib->setTranslation([&](NSString* each) -> Ref<NSString> {
        asked.push_back(each->UTF8String());
        return asked.back() == "phone" ? nullptr : text((asked.back() + "\x01<\xc3\xa4>").c_str());
    });
    const auto label = [](NSView& top, const char* name) {
        return top.widget()->findChild<QLabel*>(name)->text().toStdString();
    };
    const Ref<NSView> german = made(*nib);
    EXPECT_EQ(said, "");
    EXPECT_EQ(utf8(nib->windowTitle()), "phone");
    const auto& button = dynamic_cast<NSButton&>(*german->subviews()[0]);
    EXPECT_EQ(utf8(button.title()), "contacts & more\x01<\xc3\xa4>");
    EXPECT_EQ(utf8(button.toolTip()), "tip");
    EXPECT_EQ(utf8(button.alternateTitle()), "raw");
    EXPECT_EQ(button.target(), german);
    EXPECT_EQ(label(*german, "label"), "a & b<\xc3\xa4>");
    EXPECT_EQ(label(*german, "plain"), "plain");

    nib->setTranslation(nullptr);
    const Ref<NSView> english = made(*nib);
    EXPECT_EQ(label(*english, "label"), "a & b");
    EXPECT_EQ(utf8(dynamic_cast<NSButton&>(*english->subviews()[0]).title()), "contacts & more");
    EXPECT_EQ(utf8(button.title()), "contacts & more\x01<\xc3\xa4>");
}

TEST_F(NSNibTest, LeavesNothingBehind)
{
    const std::string table =
        widget("NSTableView", "", widget("NSTableColumn", "", widget("ZuSmsImageCell", "")));
    const Ref<NSNib> nib = nibWith(
        widget("QMainWindow", "",
               widget("QWidget", "",
                      layout("QVBoxLayout",
                             item(widget("Sleeper", "", texts("partner", "kept"))) +
                                 item(widget("NSScrollView", "", table)) +
                                 item(widget("QGroupBox", "group", widget("NSTextField", "kept")))))));
    const auto widgets = QApplication::allWidgets().size();
    Ref<NSView> top = made(*nib);
    EXPECT_EQ(said, "");
    std::vector<Weak<NSObject>> objects{top.get()};
    for (const Ref<NSView>& view : top->subviews()) {
        objects.emplace_back(view.get());
    }
    ASSERT_EQ(objects.size(), 4U);
    const auto& scroller = dynamic_cast<NSScrollView&>(*top->subviews()[1]);
    objects.emplace_back(scroller.documentView()->tableColumns()[0]->dataCell());
    Ref<NSView> kept = top->subviews()[2];
    top = nullptr;
    for (std::size_t place = 0; place < objects.size(); ++place) {
        EXPECT_EQ(objects[place].get() != nullptr, place == 3) << place;
    }
    EXPECT_EQ(kept->superview(), nullptr);
    EXPECT_EQ(kept->widget()->parentWidget(), nullptr);
    kept = nullptr;
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
}

// Files

TEST_F(NSNibTest, RefusesWhatIsNoForm)
{
    const auto repeated = [](const char* part, int count) {
        std::string all;
        for (int done = 0; done < count; ++done) {
            all += part;
        }
        return all;
    };
    const auto form = [](const std::string& content) {
        return "<ui version='4.0'>\n<widget class='QWidget' name=''>" + content + "</widget></ui>";
    };
    const auto grid = [&](const char* place) {
        return form("\n" + layout("QGridLayout", item(widget("QLabel", ""), place)));
    };
    struct {
        std::string file;
        std::string problem;
    } const cases[] = {
        {"", "1: Premature end of document."},
        {std::string("\0\xff<ui>", 6), "1: Encountered incorrectly encoded content."},
        {"<ui version='4.0'>\n<widget>\n</ui>", "3: Opening and ending tag mismatch."},
        {form("<widget cl").substr(0, 60), "2: Premature end of document."},
        {"<ui version='4.0'/>", "1: there is no widget"},
        {"<ui version='3.3'><widget/></ui>", "1: this is no form, or one of another version than 4"},
        {"\n<html><widget class='NSView' name=''/></html>",
         "2: this is no form, or one of another version than 4"},
        {form("") + form(""), "2: Extra content at end of document."},
        {"<ui version='4.0'><widget/>\n<widget/></ui>", "2: there are too many widgets"},
        {form(repeated("<widget class='QWidget'>", 100000)), "2: elements are nested too deeply"},
        {form(repeated("<widget class='QWidget'/>", 4096)), "2: there are too many widgets"},
        {form(widget("QWidget", "", "\n<layout class='QLayout'/>")), "3: there can be no such layout"},
        {form(layout("QGridLayout", "") + "\n<Layout class='QGridLayout'/>"),
         "3: there is one too many inside"},
        {form("\n" + widget("QScrollArea", "", layout("QVBoxLayout", ""))), "3: there can be no such layout"},
        {form(widget("QScrollArea", "", widget("QLabel", "") + "\n<widget class='QLabel'/>")),
         "3: there is one too many inside"},
        {grid("row='257' column='0'"), "3: there cannot be so many rows or columns"},
        {grid("row='0' column='-1'"), "3: there cannot be so many rows or columns"},
        {grid("row='0' column='0' rowspan='2147483647'"), "3: there cannot be so many rows or columns"},
        {grid("row='0' column='0' colspan='a'"), "3: there cannot be so many rows or columns"},
        {form(widget("QTableWidget", "", set("rowCount", "<number>2000000000</number>"))),
         "2: there cannot be so many rows or columns"},
        {form(widget("QTableWidget", "", repeated("<row/>", 256) + repeated("<column/>", 256) + "\n<row/>")),
         "3: there cannot be so many rows or columns"},
        {form(widget("QTableWidget", "",
                     repeated("<row/>", 256) + repeated("<column/>", 256) + "\n<column/>")),
         "3: there cannot be so many rows or columns"},
        {form(repeated("<layout class='QGridLayout'><item>", 16) + "\n<layout class='QGridLayout'>"),
         "3: layouts are nested too deeply"},
        {form(geometry(0, 0, 2147483647, 1)), "2: a length is too large"},
        {"<!DOCTYPE ui [<!ENTITY a '" + repeated("a", 2000) + "'><!ENTITY b '" + repeated("&a;", 2000) +
             "'>]>" + form("&b;"),
         "2: Entity expands to more characters than the entity expansion limit."},
    };
    for (const auto& [file, problem] : cases) {
        EXPECT_EQ(made(*nibOf(file)), nullptr) << problem;
        EXPECT_EQ(said, problem + "\n");
    }
    const std::string dropped = "<customwidgets>\n</customwidgets>";
    const std::string button = widget("NSButton", "", set("title", "<string>\n</string>\n"));
    EXPECT_EQ(made(*nibOf("<ui version='4.0'>" + dropped + "\n" + widget("QWidget", "", button + "<foo/>") +
                          "</ui>")),
              nullptr);
    EXPECT_NE(said.find("\n An error has occurred while reading the UI file at line 5,"), said.npos) << said;
}

TEST_F(NSNibTest, RefusesWhatIsNoFile)
{
    folder.write("large.ui", std::string(4 * 1024 * 1024 + 1, ' '));
    for (const char* const name : {"missing.ui", "", "large.ui"}) {
        const std::string path = folder.path() / name;
        testing::internal::CaptureStderr();
        EXPECT_EQ(make<NSNib>()->initWithContentsOfFile(text(path.c_str()).get()), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "initWithContentsOfFile: " + path + ": it cannot be read, or is too large\n");
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(make<NSNib>()->initWithContentsOfFile(nullptr), nullptr);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

} // namespace
