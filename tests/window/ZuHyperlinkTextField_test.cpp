#include "window/ZuHyperlinkTextField.h"

#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/ActionTarget.h"
#include "support/Links.h"
#include "support/Tables.h" // eventAt

#include <gtest/gtest.h>

namespace
{

TEST(ZuHyperlinkTextFieldTest, BuildsLinks)
{
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial", 13.0);
    const Ref<NSURL> target = url("http://example.org/");
    const Ref<NSAttributedString> link =
        ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(text("here").get(), target, font);
    EXPECT_EQ(utf8(link->string()), "here");
    ASSERT_EQ(link->runs().size(), 1U);
    const NSAttributes& attributes = link->runs()[0].attributes;
    EXPECT_EQ(attributes[NSFontAttributeName], font.get());
    EXPECT_EQ(attributes[NSLinkAttributeName], target.get());
    EXPECT_TRUE(attributes[NSForegroundColorAttributeName]->isEqual(NSColor::blueColor().get()));
    EXPECT_EQ(attributes[NSUnderlineStyleAttributeName]->integerValue(), 1);

    const Ref<NSAttributedString> plain =
        ZuHyperlinkTextField::hyperlinkFromString_withFont(text("here").get(), font);
    EXPECT_TRUE(plain->runs()[0].attributes == (NSAttributes{{NSFontAttributeName, font}}));
    EXPECT_EQ(ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(nullptr, target, font)->length(),
              0U);
}

TEST(ZuHyperlinkTextFieldTest, CallsItsCallerWithTheFirstLinkWhereverItIsPressed)
{
    const auto field = make<ZuHyperlinkTextField>();
    field->setFrame(NSMakeRect(0.0, 0.0, 300.0, 40.0));
    const auto caller = make<ActionTarget>();
    const Ref<NSURL> first = url("a:1");
    const auto press = [&] { field->mouseDown(eventAt(*field, {290.0, 30.0}).get()); };
    field->setAttributedStringValue(
        LinkedText().plain("see ").link("one", first).link("two", text("a:2")).text());
    field->setCaller(caller.get());
    field->setFuncAction(ActionTarget::kAction);
    press();
    EXPECT_TRUE(caller->senders.empty()) << "in link mode";
    field->setIsAction(true);
    press();
    EXPECT_EQ(caller->senders, std::vector<NSObject*>{first.get()});

    caller->onAction = [&] { field->setStringValue(text("no link")); };
    press();
    press();
    EXPECT_EQ(caller->senders.size(), 2U);

    const auto type = [&](const char* key) {
        return field->keyDown(NSEvent::keyEventWithType_characters_isARepeat_window(NSEventType::KeyDown,
                                                                                    text(key), false, nullptr)
                                  .get());
    };
    caller->onAction = [] {};
    field->setAttributedStringValue(LinkedText().link("one", first).text());
    EXPECT_TRUE(type("\r"));
    EXPECT_FALSE(type("x"));
    field->setIsAction(false);
    EXPECT_FALSE(type("\r"));
    field->setIsAction(true);
    EXPECT_EQ(caller->senders.size(), 3U);
    caller->senders.pop_back();

    field->setEnabled(false);
    press();
    field->setEnabled(true);
    field->setFuncAction({});
    press();
    field->setFuncAction(ActionTarget::kAction);
    field->setCaller(nullptr);
    press();
    {
        const auto brief = make<ActionTarget>();
        field->setCaller(brief.get());
    }
    press();
    EXPECT_EQ(caller->senders.size(), 2U);
    EXPECT_EQ(field->caller(), nullptr);
}

TEST(ZuHyperlinkTextFieldTest, StartsInLinkMode)
{
    const auto caller = make<ActionTarget>();
    const auto field = make<ZuHyperlinkTextField>();
    field->setSelectable(false);
    field->setIsAction(true);
    field->setCaller(caller.get());
    field->setFuncAction(ActionTarget::kAction);
    field->awakeFromNib();
    EXPECT_TRUE(field->isSelectable());
    EXPECT_TRUE(field->allowsEditingTextAttributes());
    EXPECT_FALSE(field->isAction());
    EXPECT_EQ(field->caller(), nullptr);
    EXPECT_EQ(field->funcAction(), SEL{});
}

} // namespace
