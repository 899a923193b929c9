#include "platform/appkit/NSNib.h"

#include "platform/appkit/NSTextField.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"
#include "window/Classes.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <array>
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
    Ref<ZuToolButton> button() const { return _button; }
    void setButton(Ref<ZuToolButton> button) { _button = std::move(button); }

    const ClassTable& classTable() const override
    {
        static constexpr std::array kProperties{property<&Owner::view, &Owner::setView>("view"),
                                                property<&Owner::button, &Owner::setButton>("button")};
        static constexpr std::array kSelectors{selector<&ActionTarget::pushed>(kAction.name)};
        static constexpr ClassTable kTable{"Owner", &NSObject::table, kProperties, kSelectors};
        return kTable;
    }

private:
    Ref<NSView> _view;
    Ref<ZuToolButton> _button;
};

std::string widget(const std::string& className, const std::string& name, const std::string& content = "")
{
    return "<widget class='" + className + "' name='" + name + "'>" + content + "</widget>";
}

std::string property(const std::string& name, const std::string& value)
{
    return "<property name='" + name + "'>" + value + "</property>";
}

std::string texts(const std::string& name, const std::string& text)
{
    return property(name, "<string>" + text + "</string>");
}

std::string geometry(int x, int y, int width, int height)
{
    const auto part = [](const std::string& name, int number) {
        return "<" + name + ">" + std::to_string(number) + "</" + name + ">";
    };
    return property("geometry", "<rect>" + part("x", x) + part("y", y) + part("width", width) +
                                    part("height", height) + "</rect>");
}

class NSNibTest : public testing::Test
{
protected:
    Ref<NSNib> nibWith(const std::string& form) const
    {
        _folder.write("form.ui", "<ui version='4.0'>\n" + form + "</ui>");
        Ref<NSNib> nib =
            make<NSNib>()->initWithContentsOfFile(text((_folder.path() / "form.ui").c_str()).get());
        nib->addClasses(kWindowClasses);
        static constexpr std::array kOwn{&Sleeper::table};
        nib->addClasses(kOwn);
        return nib;
    }

    /// What a form becomes, and what is said of that (`said`), without the path.
    Ref<NSView> made(const std::string& form, NSObject* owner = nullptr)
    {
        return made(*nibWith(form), owner);
    }
    Ref<NSView> made(NSNib& nib, NSObject* owner = nullptr)
    {
        testing::internal::CaptureStderr();
        Ref<NSView> view = nib.instantiateWithOwner(owner);
        said = testing::internal::GetCapturedStderr();
        const std::string start = "instantiateWithOwner: " + (_folder.path() / "form.ui").string() + ':';
        for (auto found = said.find(start); found != std::string::npos; found = said.find(start)) {
            said.erase(found, start.size());
        }
        return view;
    }

    std::string said;

private:
    TemporaryFolder _folder;
};

TEST_F(NSNibTest, SetsPropertiesOfEveryKind)
{
    const Ref<NSView> top =
        made(widget("NSView", "top",
                    widget("ZuToolButton", "button",
                           texts("title", "Contacts") + property("enabled", "<bool>false</bool>") +
                               property("color_border", "<color alpha='51'><red>255</red><green>0</green>"
                                                        "<blue>102</blue></color>") +
                               property("visible", "<bool>false</bool>") + texts("accessibleName", "People") +
                               texts("toolTip", "&lt;b>") + property("offset", "<number>-12</number>")) +
                        widget("NSTextField", "field",
                               property("font", "<font><family>Arial</family><pointsize>17</pointsize>"
                                                "<bold>true</bold></font>") +
                                   property("stringValue", "<cstring>text</cstring>"))));
    EXPECT_EQ(said, "");
    ASSERT_NE(top, nullptr);
    ASSERT_EQ(top->subviews().size(), 2U);
    auto& button = dynamic_cast<ZuToolButton&>(*top->subviews()[0]);
    EXPECT_EQ(utf8(button.title()), "Contacts");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.isHidden());
    EXPECT_EQ(utf8(button.accessibilityLabel()), "People");
    auto& field = dynamic_cast<NSTextField&>(*top->subviews()[1]);
    EXPECT_EQ(utf8(field.stringValue()), "text");
    EXPECT_EQ(utf8(field.font()->fontName()), "Arial Bold");
    EXPECT_EQ(field.font()->pointSize(), 17.0);
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
    EXPECT_EQ(awakened, (std::vector<std::string>{"outer in nothing with 1 beside {{10, 40}, {30, 40}}",
                                                  "inner in a view with 0 beside {{0, 0}, {200, 100}}"}));
}

TEST_F(NSNibTest, ConnectsTargetsAndOutletsByName)
{
    const Ref<Owner> owner = make<Owner>();
    const Ref<NSView> top =
        made(widget("NSView", "view",
                    widget("ZuToolButton", "button", texts("action", "pushed:") + texts("target", "owner"))),
             owner.get());
    EXPECT_EQ(said, "");
    EXPECT_EQ(owner->view(), top);
    ASSERT_NE(owner->button(), nullptr);
    owner->button()->performClick(nullptr);
    EXPECT_EQ(owner->senders, std::vector<NSObject*>{owner->button().get()});
}

} // namespace
