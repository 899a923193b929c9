#include "window/ZuCheckTableHeaderView.h"

#include "platform/appkit/NSScrollView.h"
#include "support/Accessibility.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>

namespace
{

class ZuCheckTableHeaderViewTest : public testing::Test
{
protected:
    ZuCheckTableHeaderViewTest()
    {
        table->setHeaderView(header);
        header->awakeFromNib();
    }

    /// The messages that a click leads to.
    std::vector<std::string> click(double x)
    {
        owner->messages.clear();
        QWidget& widget = *header->widget();
        const QPointF place(x, 5.0);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, held, {});
            QCoreApplication::sendEvent(&widget, &event);
        }
        return owner->messages;
    }

    using Messages = std::vector<std::string>;

    Ref<TableOwner> owner = make<TableOwner>(3);
    Ref<NSTableView> table = tableOf(*owner, make<NSCell>());
    Ref<ZuCheckTableHeaderView> header =
        make<ZuCheckTableHeaderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 23.0));
    Ref<NSScrollView> scrollView = make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
};

TEST_F(ZuCheckTableHeaderViewTest, DrawsItsImageOverTheHeaders)
{
    const NSRect part = NSMakeRect(30.0, 2.0, 50.0, 11.0);
    header->setShowChecked(false);
    const Operations headers = operationsOf(*header, part);
    header->setShowChecked(true);
    const auto drawn = [&](std::int32_t state) {
        header->setIsChecked(state);
        const Operations all = operationsOf(*header, part);
        const auto end = all.begin() + static_cast<std::ptrdiff_t>(std::min(headers.size(), all.size()));
        EXPECT_EQ(Operations(all.begin(), end), headers);
        return Operations(end, all.end());
    };
    const std::string how =
        " {{6, -0.5}, {16, 16}} from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped";
    EXPECT_EQ(drawn(0), Operations{"drawImage \"content-check-no\"" + how});
    EXPECT_EQ(drawn(1), Operations{"drawImage \"content-check-yes\"" + how});
    EXPECT_EQ(drawn(2), Operations{});
    EXPECT_EQ(drawn(-1), Operations{});
}

TEST_F(ZuCheckTableHeaderViewTest, TellsOfClicksOnItsImage)
{
    const Messages onColumn{"column"};
    scrollView->setDocumentView(table);
    scrollView->imageOfBounds(1.0); // lays it out
    EXPECT_EQ(click(0.0), Messages{"setHeaderCheckItem 1"});
    EXPECT_EQ(header->isChecked(), 1);
    EXPECT_EQ(click(10.0), Messages{"setHeaderCheckItem 0"});
    EXPECT_EQ(click(23.5), Messages{"setHeaderCheckItem 1"});
    EXPECT_EQ(click(24.0), onColumn);
    EXPECT_EQ(header->isChecked(), 1);
    header->setShowChecked(false);
    EXPECT_EQ(click(10.0), onColumn);

    header->setShowChecked(true);
    header->setImageOffset(10);
    header->setIsChecked(2);
    EXPECT_EQ(click(12.0), onColumn) << "it has no image to be hit";
    EXPECT_EQ(click(11.5), Messages{"setHeaderCheckItem 0"});
    header->setIsChecked(1);
    header->awakeFromNib();
    EXPECT_EQ(click(24.0), onColumn) << "the image is at its place again";
    EXPECT_EQ(header->isChecked(), 0);

    owner->onMessage = [this] {
        table->setHeaderView(nullptr);
        header = nullptr;
    };
    header->mouseDown(eventAt(*header, {7.0, 5.0}).get());
    EXPECT_EQ(header, nullptr) << "it is held by nothing";
}

TEST_F(ZuCheckTableHeaderViewTest, IsACheckBoxWhileItShowsAnImage)
{
    EXPECT_EQ(header->accessibilityRole(), NSAccessibilityRole::CheckBox);
    EXPECT_EQ(header->accessibilityChecked(), false);
    header->imageOfBounds(1.0);
    EXPECT_FALSE(header->needsDisplay());
    scrollView->setDocumentView(table);
    header->setAccessibilityLabel(text("Select all"));
    QAccessibleInterface& outer = accessible(*scrollView);
    EXPECT_EQ(outer.childCount(), 2) << "beside the rows";
    QAccessibleInterface& box = *outer.child(1);
    EXPECT_EQ(box.parent(), &outer);
    EXPECT_EQ(outer.indexOfChild(&box), 1);
    EXPECT_EQ(outer.indexOfChild(outer.child(0)), 0);
    EXPECT_EQ(said(box), "check box Select all Toggle unchecked");
    EXPECT_TRUE(header->accessibilityPerformPress());
    EXPECT_TRUE(header->needsDisplay());
    EXPECT_EQ(header->accessibilityChecked(), true);
    EXPECT_EQ(owner->messages, Messages{"setHeaderCheckItem 1"});
    EXPECT_EQ(said(box), "check box Select all Toggle checked");
    box.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(owner->messages.back(), "setHeaderCheckItem 0");
    header->setIsChecked(1);
    owner->messages.resize(1);
    header->setShowChecked(false);
    EXPECT_EQ(header->accessibilityRole(), NSAccessibilityRole::Unknown);
    EXPECT_EQ(header->accessibilityChecked(), std::nullopt);
    EXPECT_FALSE(header->accessibilityPerformPress());
    EXPECT_EQ(owner->messages.size(), 1U);
    EXPECT_EQ(outer.childCount(), 1);
}

TEST_F(ZuCheckTableHeaderViewTest, HasNothingToShowWhenMadeInCode)
{
    const Ref<ZuCheckTableHeaderView> bare = make<ZuCheckTableHeaderView>();
    table->setHeaderView(bare);
    const Operations headers = operationsOf(*bare);
    EXPECT_FALSE(bare->showChecked());
    bare->setShowChecked(true);
    EXPECT_EQ(operationsOf(*bare), headers);
    bare->mouseDown(eventAt(*bare, {2.0, 5.0}).get());
    EXPECT_EQ(bare->isChecked(), 0);
    bare->mouseDown(eventAt(*bare, {1.5, 5.0}).get());
    EXPECT_EQ(bare->isChecked(), 1);
}

} // namespace
