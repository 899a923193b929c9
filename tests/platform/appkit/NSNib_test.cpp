#include "platform/appkit/NSNib.h"

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
#include <regex>
#include <string>
#include <vector>

namespace
{

std::vector<std::string> awakened;

/// Writes down what it finds when it is told to awake.
class Sleeper : public NSView
{
public:
    Ref<NSView> partner() const { return _partner.get(); }
    void setPartner(NSView* partner) { _partner = partner; }

    void awakeFromNib() override
    {
        const Ref<NSView> partner = _partner.get();
        awakened.push_back(utf8(toolTip()) + " in " + (superview() != nullptr ? "a view" : "nothing") +
                           " with " + std::to_string(subviews().size()) + " beside " +
                           (partner ? NSStringFromRect(partner->frame()) : "nobody"));
    }

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    Weak<NSView> _partner;
};

constexpr std::array kSleeperProperties{property<&Sleeper::partner, &Sleeper::setPartner>("partner")};

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
    Ref<ZuToolButton> button() const { return _button; }
    void setButton(Ref<ZuToolButton> button) { _button = std::move(button); }

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

private:
    Ref<ZuToolButton> _button;
};

constexpr std::array kOwnerProperties{
    property<&Owner::button, &Owner::setButton>("button"),
    property<&Owner::button, &Owner::setButton>("misfit"),
};
constexpr std::array kOwnerSelectors{selector<&ActionTarget::pushed>(ActionTarget::kAction.name)};

constinit const ClassTable Owner::table{"Owner", &NSObject::table, kOwnerProperties, kOwnerSelectors};
constinit const ClassTable kHelper{"Helper", &NSObject::table, {}, {}, makeObject<ActionTarget>};
constinit const ClassTable kOtherLine{"ZuLine", &NSView::table, {}, {}, makeObject<Sleeper>};
constinit const ClassTable kOwnDial{"QDial", &NSView::table, {}, {}, makeObject<Sleeper>};

/// A form in full. In `notation`, an element that begins with a capital letter is a widget, or a layout
/// without margins, of that class and perhaps name; a property is in brackets.
std::string written(std::string notation)
{
    static const std::pair<std::regex, const char*> kRules[] = {
        {std::regex("<([A-Z]\\w*)( \\w+)?/>"), "<$1$2></$1>"},
        {std::regex("<([A-Z]\\w*Layout)>"),
         "<layout class='$1'>[leftMargin=0][topMargin=0][rightMargin=0][bottomMargin=0][spacing=0]"},
        {std::regex("</[A-Z]\\w*Layout>"), "</layout>"},
        {std::regex("<([A-Z][\\w#&;]*) ?(\\w*)>"), "<widget class='$1' name='$2'>"},
        {std::regex("</[A-Z]\\w*>"), "</widget>"},
        {std::regex("\\[(-?\\d+),(-?\\d+),(\\d+),(\\d+)\\]"),
         "<property name='geometry'><rect><x>$1</x><y>$2</y>"
         "<width>$3</width><height>$4</height></rect></property>"},
        {std::regex("\\[(\\w+)=(\\d+)x(\\d+)\\]"),
         "<property name='$1'><size><width>$2</width><height>$3</height></size></property>"},
        {std::regex("\\[(\\w+)=(\\d+)\\]"), "<property name='$1'><number>$2</number></property>"},
        {std::regex("\\[(\\w+)=(true|false)\\]"), "<property name='$1'><bool>$2</bool></property>"},
        {std::regex("\\[([^=\\]]+)=(<[^\\]]*)\\]"), "<property name='$1'>$2</property>"},
        {std::regex("\\[([^=\\]]+)=([^\\]]*)\\]"), "<property name='$1'><string>$2</string></property>"},
    };
    for (const auto& [shorthand, full] : kRules) {
        notation = std::regex_replace(notation, shorthand, full);
    }
    return notation;
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

/// What a property has.
std::string shown(const Ref<NSObject>& value)
{
    if (const auto* const color = dynamic_cast<NSColor*>(value.get())) {
        return color->description();
    }
    if (const auto* const image = dynamic_cast<NSImage*>(value.get())) {
        return "image " + NSStringFromRect({{}, image->size()});
    }
    if (const auto* const font = dynamic_cast<NSFont*>(value.get())) {
        return utf8(font->fontName()) + " " + std::to_string(font->pointSize()).substr(0, 4);
    }
    if (const auto* const number = dynamic_cast<NSNumber*>(value.get())) {
        return std::to_string(number->doubleValue()).substr(0, 3);
    }
    return value ? utf8(dynamic_cast<NSString*>(value.get())) : "none";
}

class NSNibTest : public testing::Test
{
protected:
    Ref<NSNib> nibWith(const std::string& form) const
    {
        return nibOf("<ui version='4.0'>" + written(form) + "</ui>");
    }
    Ref<NSNib> nibOf(const std::string& file) const
    {
        static constexpr std::array kOwn{&Sleeper::table, &Owner::table, &kHelper, &kOtherLine, &kOwnDial};
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
        said = std::regex_replace(said, std::regex("instantiateWithOwner: .*form\\.ui:"), "");
        return view;
    }
    /// The frames in a view that fills a window of that size.
    std::string framesInWindow(const Ref<NSView>& view, double width, double height)
    {
        window = make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, width, height),
                                                                 NSWindowStyleMaskResizable);
        window->setContentView(view);
        window->makeKeyAndOrderFront();
        QApplication::processEvents();
        return frames(*view);
    }

    TemporaryFolder folder;
    Ref<NSWindow> window;
    std::string said;
};

TEST_F(NSNibTest, SetsPropertiesOfEveryKind)
{
    QImage(2, 1, QImage::Format_RGB32).save(QString::fromStdString(folder.path() / "picture.png"));
    struct {
        const char* className;
        const char* property;
        const char* key;
        const char* expected;
    } const cases[] = {
        {"NSBox", "[fillColor=<color alpha='51'><red>255</red><green>0</green><blue>102</blue></color>]",
         "fillColor", "sRGB(1, 0, 0.4, 0.2)"},
        {"NSBox", "[borderColor=<color><red>0</red><green>0</green><blue>0</blue></color>]", "borderColor",
         "sRGB(0, 0, 0, 1)"},
        {"NSBox", "[borderWidth=<double>2.5</double>]", "borderWidth", "2.5"},
        {"NSBox", "[cornerRadius=3]", "cornerRadius", "3.0"},
        {"NSBox", "[cornerRadius=<uint>4</uint>]", "cornerRadius", "4.0"},
        {"NSBox", "[cornerRadius=<float>5</float>]", "cornerRadius", "5.0"},
        {"NSBox", "[transparent=<bool> true\n</bool>]", "transparent", "1.0"},
        {"NSButton", "[title=Contacts]", "title", "Contacts"},
        {"NSButton", "[enabled=false]", "enabled", "0.0"},
        {"NSButton", "[image=picture.png]", "image", "image {{0, 0}, {2, 1}}"},
        {"NSButton", "[image=<pixmap>picture.png</pixmap>]", "image", "image {{0, 0}, {2, 1}}"},
        {"NSButton", "[image=<iconset><normaloff>calendar@2x.png</normaloff>other.png</iconset>]", "image",
         "image {{0, 0}, {32, 32}}"}, // of the main bundle
        {"NSTextField", "[stringValue=<cstring>text</cstring>]", "stringValue", "text"},
        {"NSTextField",
         "[font=<font><family>Times</family><pointsize>17</pointsize><bold>true</bold></font>]", "font",
         "Times Bold 17.0"},
        {"NSTextField", "[font=<font><bold>true</bold><italic>true</italic></font>]", "font",
         "Arial Bold Italic 12.0"}, // a file has of a font what was changed
        {"NSView", "[visible=false]", "hidden", "1.0"},
        {"NSView", "[toolTip=&lt;b>]", "toolTip", "<b>"},
        {"NSView", "[accessibleName=People]", "accessibilityLabel", "People"},
        {"QWidget", "[visible=false]", "hidden", "1.0"},
        {"QWidget", "[toolTip=&lt;b>]", "toolTip", "<b>"},
        {"QWidget", "[accessibleName=People]", "accessibilityLabel", "People"},
        // The rest of what widgets have means nothing here.
        {"NSButton", "[styleSheet=color: red]", "enabled", "1.0"},
        {"NSButton", "[palette=<palette/>]", "title", "none"},
    };
    for (const auto& [className, property, key, expected] : cases) {
        const Ref<NSView> top = made("<" + std::string(className) + ">" + property + "</" + className + ">");
        EXPECT_EQ(said, "") << property;
        EXPECT_EQ(shown(top->valueForKey(key)), expected) << property;
        EXPECT_EQ(top->widget()->styleSheet(), "");
    }
}

TEST_F(NSNibTest, LeavesOtherWidgetsToTheToolkit)
{
    QImage(2, 1, QImage::Format_RGB32).save(QString::fromStdString(folder.path() / "picture.png"));
    const Ref<NSView> top = made(R"(<QWidget>[enabled=false]<Line line/>
        <QLabel>[pixmap=<pixmap>picture.png</pixmap>]</QLabel>
        <QRadioButton><attribute name='buttonGroup'><string>group</string></attribute></QRadioButton>
        <QRadioButton><attribute name='buttonGroup'/></QRadioButton>
        </QWidget><buttongroups><buttongroup name='group'/></buttongroups>)");
    EXPECT_EQ(said, "");
    EXPECT_FALSE(top->widget()->isEnabled());
    EXPECT_NE(top->widget()->findChild<QFrame*>("line"), nullptr);
    EXPECT_EQ(top->widget()->findChild<QLabel*>()->pixmap().size(), QSize(2, 1));
    EXPECT_EQ(top->widget()->findChild<QButtonGroup*>("group")->buttons().size(), 1);
    made("<QOpenGLWidget/>");
    EXPECT_EQ(said, "1: QOpenGLWidget \"\": there is no such class\n");
}

TEST_F(NSNibTest, ReportsWhatCannotBeSetAndGoesOn)
{
    const Ref<Owner> owner = make<Owner>();
    struct {
        std::string property;
        std::string problem;
    } const cases[] = {
        {"[colour=red]", "colour: there is no such property"},
        {"[" + std::string(101, 'c') + "=red]", std::string(100, 'c') + ": there is no such property"},
        {"[title=1]", "title: the value does not fit"},
        {"[enabled=yes]", "enabled: \"yes\" does not fit"},
        {"[enabled=<bool>yes</bool>]", "enabled: the value cannot be read"},
        {"<property name='enabled'/>", "enabled: the value cannot be read"},
        {"[enabled=2147483648000000000000]", "enabled: the value cannot be read"},
        {"[title=<brush/>]", "title: the value cannot be read"},
        {"[image=<pixmap>nothing.png</pixmap>]", "image: the value cannot be read"},
        {"[image=.]", "image: \".\" does not fit"},
        {"[image=<pixmap>/dev/zero</pixmap>]", "image: the value cannot be read"},
        {"[image=<color><red>256</red><green>0</green><blue>0</blue></color>]",
         "image: the value cannot be read"},
        {"[image=wrong]", "image: the object \"wrong\" does not fit"},
        {"[target=nobody]", "target: there is no object \"nobody\""},
        {"[target=1]", "target: the value does not fit"},
        {"[action=pushed:]", "action: \"pushed:\" does not fit"}, // without a target
        {"[target=owner][action=pulled:]", "action: \"pulled:\" does not fit"},
        {"[a&#10;b&#x9b;=]", "a?b?: there is no such property"},
    };
    for (const auto& [property, problem] : cases) {
        const Ref<NSView> top =
            made("<NSView>\n<NSButton wrong>\n" + property + "[alternateTitle=behind]</NSButton></NSView>",
                 owner.get());
        EXPECT_EQ(said, "3: NSButton \"wrong\": " + problem + "\n");
        EXPECT_EQ(shown(top->subviews().at(0)->valueForKey("alternateTitle")), "behind");
    }
}

TEST_F(NSNibTest, AwakesViewsOnceWhenAllAreConnected)
{
    awakened.clear();
    const Ref<NSView> top = made(R"(<Sleeper top>[0,0,200,100][toolTip=outer][partner=inner]
        <Sleeper inner>[10,20,30,40][toolTip=inner][partner=top]</Sleeper></Sleeper>)");
    EXPECT_EQ(said, "");
    EXPECT_EQ(awakened, (std::vector<std::string>{"inner in a view with 0 beside {{0, 0}, {200, 100}}",
                                                  "outer in nothing with 1 beside {{10, 40}, {30, 40}}"}));
}

TEST_F(NSNibTest, ConnectsTargetsAndOutletsByName)
{
    const Ref<Owner> owner = make<Owner>();
    const Ref<ActionTarget> other = make<ActionTarget>();
    const Ref<NSNib> nib = nibWith(R"(<NSView>
        <ZuToolButton button>[action=pushed:][target=owner]</ZuToolButton>
        <NSTextField field>[delegate=field][target=other]</NSTextField>
        <NSTextField misfit/><QLabel label/><Helper/>
        <ZuToolButton button/><NSView/><NSView/>
        <NSView owner/></NSView>)");
    nib->setObject_forName(other, "other");
    const Ref<NSView> top = made(*nib, owner.get());
    EXPECT_EQ(said, "5: ZuToolButton \"button\": another object has that name\n"
                    "6: NSView \"owner\": another object has that name\n"
                    "4: NSTextField \"misfit\": it does not fit the owner's property of that name\n");
    ASSERT_EQ(owner->button(), top->subviews().at(0));
    EXPECT_EQ(shown(owner->button()->valueForKey("action")), "pushed:");
    owner->button()->performClick(nullptr);
    EXPECT_EQ(owner->senders, std::vector<NSObject*>{owner->button().get()});
    const auto& field = dynamic_cast<NSTextField&>(*top->subviews()[1]);
    EXPECT_EQ(field.delegate(), &field);
    EXPECT_EQ(field.target(), other);

    nib->setObject_forName(nullptr, "other");
    made(*nib);
    EXPECT_EQ(said, "5: ZuToolButton \"button\": another object has that name\n"
                    "2: ZuToolButton \"button\": action: \"pushed:\" does not fit\n"
                    "3: NSTextField \"field\": target: there is no object \"other\"\n");
}

TEST_F(NSNibTest, PutsAPlainViewInPlaceOfAnUnknownClass)
{
    const Ref<NSView> top = made("<NSView><ZuNothing x><NSBox/><Owner/></ZuNothing></NSView>");
    EXPECT_EQ(said, "1: ZuNothing \"x\": there is no such class\n"
                    "1: Owner \"\": there is no such class\n"); // which nobody can make
    ASSERT_EQ(top->subviews().size(), 1U);
    EXPECT_EQ(top->subviews()[0]->classTable().name, "NSView");
    EXPECT_EQ(top->subviews()[0]->subviews().at(0)->classTable().name, "NSBox");
}

TEST_F(NSNibTest, KnowsEveryViewAndCellThatThereIs)
{
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
    for (const std::string name : {"NSView", "NSBox", "NSButton", "NSComboBox", "NSControl", "NSScrollView",
                                   "NSTextField", "ZuLine", "Sleeper", "QDial"}) {
        const Ref<NSView> top = made("<" + name + "/>");
        EXPECT_EQ(said, "");
        EXPECT_EQ(top->classTable().name, name == "QDial" ? "Sleeper" : name);
    }
}

TEST_F(NSNibTest, PutsTablesTogether)
{
    const Ref<NSView> top = made(R"(<NSView top><NSScrollView>[0,0,300,200]
        <NSTableView table>[delegate=top][rowHeight=30]
            <ZuCheckTableHeaderView>[0,0,100,40]</ZuCheckTableHeaderView>
            <NSTableColumn>[width=50][identifier=one][title=Name]
                <ZuTableHeaderCell/><ZuSmsImageCell>[isTitleAlignCenter=true]</ZuSmsImageCell>
            </NSTableColumn>
            <NSTableColumn/>
        </NSTableView></NSScrollView>
        <NSTextField><ZuCenterTextFieldCell/></NSTextField></NSView>)");
    EXPECT_EQ(said, "");
    const auto& field = dynamic_cast<NSTextField&>(*top->subviews().at(1));
    EXPECT_EQ(field.cell()->classTable().name, "ZuCenterTextFieldCell");
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
    EXPECT_EQ(utf8(first.identifier()), "one");
    EXPECT_EQ(utf8(first.title()), "Name");
    EXPECT_EQ(first.headerCell()->classTable().name, "ZuTableHeaderCell");
    // Awake, the cell has its defaults.
    EXPECT_FALSE(dynamic_cast<ZuSmsImageCell&>(*first.dataCell()).isTitleAlignCenter());
    EXPECT_EQ(first.width(), 50.0);
}

TEST_F(NSNibTest, ReportsWhatIsInsideOfTheWrongThing)
{
    const std::array<std::string, 3> cases[] = {
        {"<NSView>\n<NSTableView/></NSView>", "NSTableView", "NSView"},
        {"\n<NSTableHeaderView/>", "NSTableHeaderView", "NSScrollView"},
        {"<NSView>\n<NSTableColumn/></NSView>", "NSTableColumn", "NSView"},
        {"<NSButton>\n<ZuSmsImageCell/></NSButton>", "ZuSmsImageCell", "NSButton"},
        {"<NSTableView>\n<NSButton/></NSTableView>", "NSButton", "NSTableView"},
        {"<NSTableView><NSTableHeaderView>\n<NSButton/></NSTableHeaderView></NSTableView>", "NSButton",
         "NSTableHeaderView"},
        {"<NSTableView><NSTableColumn>\n<NSButton/></NSTableColumn></NSTableView>", "NSButton",
         "NSTableColumn"},
    };
    for (const auto& [form, inner, outer] : cases) {
        made("<NSScrollView>" + form + "</NSScrollView>");
        std::string expected = "2: " + inner;
        expected += " \"\": it cannot be inside of an object of class " + outer;
        EXPECT_EQ(said, expected += '\n');
    }
}

// Places

TEST_F(NSNibTest, HasFramesFollowTheLayouts)
{
    const Ref<NSView> top = made(R"(<NSView>[0,0,200,100]<QVBoxLayout>
        <item><Sleeper>[minimumSize=0x10]
            [sizePolicy=<sizepolicy hsizetype='Preferred' vsizetype='Fixed'/>]</Sleeper></item>
        <item><QHBoxLayout>
            <item><ZuFlippedView>[minimumSize=60x0][maximumSize=60x1000]
                [layoutDirection=<enum>Qt::RightToLeft</enum>]<QGridLayout>
                <item row='0' column='0'><Sleeper/></item><item row='0' column='1'><Sleeper/></item>
            </QGridLayout></ZuFlippedView></item>
            <item><spacer>[orientation=<enum>Qt::Horizontal</enum>]</spacer></item>
            <item><QWidget>[minimumSize=80x0][maximumSize=80x1000]<Sleeper>[5,6,7,8]</Sleeper></QWidget></item>
        </QHBoxLayout></item>
        </QVBoxLayout></NSView>)");
    EXPECT_EQ(said, "");
    EXPECT_EQ(frames(*top),
              "{{0, 90}, {200, 10}} {{0, 0}, {60, 90}} [{{30, 0}, {30, 90}} {{0, 0}, {30, 90}}] "
              "{{125, 76}, {7, 8}}");
    EXPECT_EQ(framesInWindow(top, 300.0, 150.0),
              "{{0, 140}, {300, 10}} {{0, 0}, {60, 140}} [{{30, 0}, {30, 140}} {{0, 0}, {30, 140}}] "
              "{{225, 126}, {7, 8}}");
}

TEST_F(NSNibTest, HasFramesFollowWidgetsOfTheToolkit)
{
    const Ref<NSView> top = made(R"(<NSView>
        <QTabWidget>[10,20,200,100]
            <QWidget><QVBoxLayout><item><Sleeper>[toolTip=one]</Sleeper></item></QVBoxLayout></QWidget>
            <Sleeper>[toolTip=two]<attribute name='title'><string>Two</string></attribute></Sleeper>
        </QTabWidget>
        <QFrame outer>[100,200,50,50]<QFrame inner>[10,10,30,30]
            <NSView>[1,2,10,10]<NSView>[3,1,2,2]</NSView></NSView>
        </QFrame></QFrame>
        <QScrollArea>[300,0,100,100]<Sleeper>[0,0,300,300]</Sleeper></QScrollArea>
        </NSView>)");
    EXPECT_EQ(said, "");
    framesInWindow(top, 400.0, 300.0);
    auto* const tabs = top->widget()->findChild<QTabWidget*>();
    EXPECT_EQ(tabs->tabText(1), "Two");
    for (int current : {0, 1}) {
        tabs->setCurrentIndex(current);
        QApplication::processEvents();
        for (const Ref<NSView>& view : {top->subviews()[0], top->subviews()[1]}) {
            const QWidget& page = *view->widget();
            const bool isCurrent = utf8(view->toolTip()) == (current == 0 ? "one" : "two");
            EXPECT_EQ(page.isVisible(), isCurrent);
            const QPoint place = page.mapTo(top->widget(), QPoint());
            EXPECT_GT(place.y(), 20);
            EXPECT_EQ(view->frame(),
                      NSMakeRect(place.x(), 300.0 - place.y() - page.height(), page.width(), page.height()));
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
    const Ref<NSView> top = made(R"(<QWidget>[50,60,200,100]
        <NSView>[10,10,50,20]<NSView>[1,2,3,4]</NSView></NSView>
        <ZuFlippedView>[70,10,50,20]<NSView>[1,2,3,4]</NSView></ZuFlippedView>
        <QWidget><QVBoxLayout><item><NSView/></item></QVBoxLayout></QWidget></QWidget>)");
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
    const std::string laidOut = R"(<QVBoxLayout><item><NSView/></item><item><spacer>[sizeHint=80x40]
        [sizeType=<enum>QSizePolicy::Preferred</enum>]</spacer></item></QVBoxLayout>)";
    const std::pair<std::string, std::string> cases[] = {
        {"<NSView>[1,2,80,40]</NSView>", ""},
        {"<NSView>" + laidOut + "</NSView>", "{{0, 40}, {80, 0}}"},
        {"<QDialog>" + laidOut + "</QDialog>", "{{0, 40}, {80, 0}}"},
        {"<QDialog>[1,2,80,40]<NSView>[10,0,20,30]</NSView></QDialog>", "{{10, 10}, {20, 30}}"},
        {R"(<QMainWindow>[1,2,80,40]<QMenuBar/>
            <QWidget><QVBoxLayout><item><NSView/></item></QVBoxLayout></QWidget></QMainWindow>)",
         "{{0, 0}, {80, 40}}"},
    };
    for (const auto& [form, expected] : cases) {
        const Ref<NSView> top = made(form);
        EXPECT_EQ(said, "") << form;
        EXPECT_EQ(top->frame(), NSMakeRect(0.0, 0.0, 80.0, 40.0)) << form;
        EXPECT_EQ(frames(*top), expected) << form;
        EXPECT_EQ(top->superview(), nullptr);
        EXPECT_EQ(framesInWindow(top, 80.0, 40.0), expected) << form;
    }
    made("<NSTableView>[0,0,10,10]</NSTableView>");
    EXPECT_EQ(said, "1: NSTableView \"\": it cannot be inside of an object of class NSView\n");
}

TEST_F(NSNibTest, KeepsTheOrderOfTheFile)
{
    const Ref<NSNib> nib = nibWith(
        R"(<NSView><NSTextField a>[stringValue=a]</NSTextField><NSTextField b>[stringValue=b]</NSTextField>
        <NSTextField c>[stringValue=c]</NSTextField><QPushButton push/>
        <NSScrollView><NSTableView table/></NSScrollView><zorder>c</zorder><zorder>a</zorder></NSView>
        <tabstops><tabstop>c</tabstop><tabstop>table</tabstop><tabstop>nothing</tabstop><tabstop>elsewhere</tabstop>
        <tabstop>push</tabstop><tabstop>a</tabstop><tabstop>b</tabstop></tabstops>)");
    nib->setObject_forName(make<NSTextField>(), "elsewhere");
    const Ref<NSView> top = made(*nib);
    EXPECT_EQ(said, "");
    std::string order;
    for (const Ref<NSView>& view : top->subviews()) {
        const auto* const field = dynamic_cast<NSTextField*>(view.get());
        order += field != nullptr ? utf8(field->stringValue()) : "-";
    }
    EXPECT_EQ(order, "b-ca");
    const auto find = [&](const char* name) { return top->widget()->findChild<QWidget*>(name); };
    const auto editor = [&](const char* name) -> QWidget* { return find(name)->findChild<QTextEdit*>(); };
    QWidget* taker = editor("c");
    for (QWidget* const expected : {taker, static_cast<QWidget*>(top->widget()->findChild<QTreeView*>()),
                                    find("push"), editor("a"), editor("b"), taker}) {
        EXPECT_EQ(taker, expected);
        do {
            taker = taker->nextInFocusChain();
        } while ((taker->focusPolicy() & Qt::TabFocus) == 0);
    }
}

// Texts

TEST_F(NSNibTest, TranslatesWhatIsToBeTranslated)
{
    const Ref<NSNib> nib = nibWith(R"(<NSView>[windowTitle=phone][toolTip=]
        <NSButton>[title=contacts &amp; more][accessibleName=same][windowTitle=none][target=owner][action=pushed:]
            <property name='toolTip'><string notr='true'>tip</string></property>
            <property name='alternateTitle'><cstring>raw</cstring></property></NSButton>
        <QLabel label>[text=a &amp; b]</QLabel>
        <QLabel plain><property name='text'><string notr='true'>plain</string></property></QLabel></NSView>)");
    nib->setTranslation([&](NSString* each) -> Ref<NSString> {
        const std::string written = each->UTF8String();
        return written == "same" ? nullptr : text((written + "\x01<\xc3\xa4>").c_str());
    });
    const auto label = [](NSView& top, const char* name) {
        return top.widget()->findChild<QLabel*>(name)->text().toStdString();
    };
    const Ref<Owner> owner = make<Owner>();
    const Ref<NSView> german = made(*nib, owner.get());
    EXPECT_EQ(said, "");
    EXPECT_EQ(utf8(nib->windowTitle()), "phone\x01<\xc3\xa4>");
    const auto& button = dynamic_cast<NSButton&>(*german->subviews()[0]);
    EXPECT_EQ(utf8(button.title()), "contacts & more\x01<\xc3\xa4>");
    EXPECT_EQ(utf8(button.accessibilityLabel()), "same");
    EXPECT_EQ(utf8(button.toolTip()), "tip");
    EXPECT_EQ(utf8(button.alternateTitle()), "raw");
    EXPECT_EQ(button.target(), owner);
    EXPECT_EQ(shown(button.valueForKey("action")), "pushed:");
    EXPECT_EQ(utf8(german->toolTip()), "") << "nothing is no text to be translated";
    EXPECT_EQ(label(*german, "label"), "a & b<\xc3\xa4>");
    EXPECT_EQ(label(*german, "plain"), "plain");

    nib->setTranslation(nullptr);
    const Ref<NSView> english = made(*nib);
    EXPECT_EQ(utf8(nib->windowTitle()), "phone");
    EXPECT_EQ(label(*english, "label"), "a & b");
    EXPECT_EQ(utf8(dynamic_cast<NSButton&>(*english->subviews()[0]).title()), "contacts & more");
    EXPECT_EQ(utf8(button.title()), "contacts & more\x01<\xc3\xa4>");
}

TEST_F(NSNibTest, LeavesNothingBehind)
{
    const Ref<NSNib> nib = nibWith(R"(<QMainWindow><QWidget><QVBoxLayout>
        <item><Sleeper>[partner=kept]</Sleeper></item>
        <item><NSScrollView><NSTableView><NSTableColumn><ZuSmsImageCell/></NSTableColumn></NSTableView>
            </NSScrollView></item>
        <item><QGroupBox><NSTextField kept/></QGroupBox></item></QVBoxLayout></QWidget></QMainWindow>)");
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

TEST_F(NSNibTest, MayGoWhileItIsUsed)
{
    Ref<NSNib> nib =
        nibWith("<NSView>[toolTip=tip]<NSButton>[colour=red][delegate=owner]</NSButton></NSView>");
    Ref<Owner> owner = make<Owner>();
    nib->setTranslation([&](NSString*) -> Ref<NSString> {
        nib = nullptr;
        owner = nullptr;
        return nullptr;
    });
    made(*nib, owner.get());
    EXPECT_EQ(said, "1: NSButton \"\": colour: there is no such property\n"
                    "1: NSButton \"\": delegate: there is no such property\n");
    EXPECT_EQ(owner, nullptr);
}

// Files

TEST_F(NSNibTest, RefusesWhatIsNoForm)
{
    const auto repeated = [](const std::string& part, int count) {
        std::string all;
        for (int done = 0; done < count; ++done) {
            all += part;
        }
        return all;
    };
    const auto form = [](const std::string& content) {
        return "<ui version='4.0'>\n" + written("<QWidget>" + content + "</QWidget></ui>");
    };
    const auto grid = [&](const std::string& place) {
        return form("\n<QGridLayout><item " + place + "><QLabel/></item></QGridLayout>");
    };
    const std::string rows = repeated("<row/>", 256) + repeated("<column/>", 256);
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
        {"\n<html version='4.0'><widget/></html>", "2: this is no form, or one of another version than 4"},
        {form("") + form(""), "2: Extra content at end of document."},
        {"<ui version='4.0'><widget/>\n<widget/></ui>", "2: there are too many widgets"},
        {form(repeated("<widget class='QWidget'>", 100000)), "2: elements are nested too deeply"},
        {form(repeated("<QWidget/>", 4096)), "2: there are too many widgets"},
        {form("<QWidget>\n<layout class='QLayout'/></QWidget>"), "3: there can be no such layout"},
        {form("<QGridLayout/>\n<Layout class='QGridLayout'/>"), "3: there is one too many inside"},
        {form("<QScrollArea>\n<QVBoxLayout/></QScrollArea>"), "3: there can be no such layout"},
        {form("<QScrollArea><QLabel/>\n<QLabel/></QScrollArea>"), "3: there is one too many inside"},
        {form(repeated("<layout class='QGridLayout'><item>", 16) + "\n<QGridLayout/>"),
         "3: layouts are nested too deeply"},
        {grid("row='257' column='0'"), "3: there cannot be so many rows or columns"},
        {grid("row='0' column='-1'"), "3: there cannot be so many rows or columns"},
        {grid("row='0' column='0' rowspan='2147483647'"), "3: there cannot be so many rows or columns"},
        {grid("row='0' column='0' colspan='a'"), "3: there cannot be so many rows or columns"},
        {form("<QTableWidget>[rowCount=2000000000]</QTableWidget>"),
         "2: there cannot be so many rows or columns"},
        {form("<QTableWidget>" + rows + "\n<row/></QTableWidget>"),
         "3: there cannot be so many rows or columns"},
        {form("<QTableWidget>" + rows + "\n<column/></QTableWidget>"),
         "3: there cannot be so many rows or columns"},
        {form("<QLabel>[0,0,2147483647,1]</QLabel>"), "2: a length is too large"},
        {"<!DOCTYPE ui [<!ENTITY a '" + repeated("a", 2000) + "'><!ENTITY b '" + repeated("&a;", 2000) +
             "'>]>" + form("&b;"),
         "2: Entity expands to more characters than the entity expansion limit."},
    };
    for (const auto& [file, problem] : cases) {
        EXPECT_EQ(made(*nibOf(file)), nullptr) << problem;
        EXPECT_EQ(said, problem + "\n");
    }
    EXPECT_NE(
        made(repeated("<QWidget><QGridLayout><item>", 17) + repeated("</item></QGridLayout></QWidget>", 17)),
        nullptr);
    // The form loader's own complaint.
    EXPECT_EQ(made(*nibOf(form("<customwidgets>\n</customwidgets>\n<NSButton>[title=\n]</NSButton><foo/>"))),
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
