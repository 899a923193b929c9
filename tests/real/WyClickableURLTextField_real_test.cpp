// Links under the pointer of a display.

#include "window/WyClickableURLTextField.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "platform/graphics/NSFont.h"
#include "real/Desktop.h"
#include "real/OtherProcess.h"
#include "real/PointerImage.h"
#include "support/Links.h"
#include "window/ZuHyperlinkTextField.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

namespace
{

class LinksRealTest : public testing::Test
{
protected:
    LinksRealTest()
    {
        field->setAttributedStringValue(LinkedText()
                                            .plain("See ")
                                            .link("the first page", url("http://example.org/1?a=b&c\xC3\xBC"))
                                            .plain(" or ")
                                            .link("the second", url("http://example.org/2"))
                                            .text());
        field->setCanCopyURLs(true);
        selectable->awakeFromNib();
        selectable->setEditable(false);
        selectable->setAttributedStringValue(ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(
            text("the third").get(), text("http://example.org/3"), nullptr));
        content->addSubview(field);
        content->addSubview(selectable);
        window->setContentView(content);
        desktop::movePointer(QPoint(5, 5));
        window->makeKeyAndOrderFront();
        desktop::focus(content->widget()->window()->winId());
        EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); }));
    }

    static QPoint in(NSView& view, QPoint place) { return view.widget()->mapToGlobal(place); }

    /// Whether the pointer shows at a place as it does over a widget with this cursor.
    static bool shows(QPoint place, Qt::CursorShape shape)
    {
        QWidget model(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        model.setCursor(shape);
        model.setGeometry(900, 600, 40, 40);
        model.show();
        desktop::movePointer(QPoint(5, 5));
        desktop::waitUntil([] { return true; });
        const std::vector<unsigned long> elsewhere = desktop::pointerImage();
        desktop::movePointer(QPoint(920, 620));
        std::vector<unsigned long> expected;
        EXPECT_TRUE(desktop::waitUntil([&] { return (expected = desktop::pointerImage()) != elsewhere; }));
        desktop::movePointer(place);
        return desktop::waitUntil([&] { return desktop::pointerImage() == expected; });
    }

    static void click(QPoint place)
    {
        desktop::movePointer(place);
        desktop::press();
        desktop::release();
    }

    bool opens(const std::vector<std::string>& urls)
    {
        std::vector<std::string> all;
        return desktop::waitUntil([&] {
            for (const std::string& each : opened.take()) {
                all.push_back(each);
            }
            return all == urls;
        });
    }

    Ref<NSApplication> application = NSApplication::sharedApplication();
    OpenedLinks opened;
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(100.0, 400.0, 300.0, 160.0), 0);
    Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 300.0, 160.0));
    Ref<WyClickableURLTextField> field =
        make<WyClickableURLTextField>()->initWithFrame(NSMakeRect(20.0, 100.0, 260.0, 40.0));
    Ref<ZuHyperlinkTextField> selectable =
        make<ZuHyperlinkTextField>()->initWithFrame(NSMakeRect(20.0, 20.0, 260.0, 40.0));
    const QPoint plain{12, 10};
    const QPoint first{60, 10};
    const QPoint second{150, 10};
};

TEST_F(LinksRealTest, TurnThePointerIntoAHandAndOpen)
{
    EXPECT_TRUE(shows(in(*field, first), Qt::PointingHandCursor));
    EXPECT_TRUE(shows(in(*field, plain), Qt::ArrowCursor));
    EXPECT_TRUE(shows(in(*field, second), Qt::PointingHandCursor));
    click(in(*field, first));
    EXPECT_TRUE(opens({"http://example.org/1?a=b&c\xC3\xBC"}));
    desktop::movePointer(in(*field, first));
    desktop::press();
    desktop::movePointer(in(*field, second));
    desktop::release();
    click(in(*field, plain));
    click(in(*field, second));
    EXPECT_TRUE(opens({"http://example.org/2"}))
        << "not what was pressed on one link and released on another";
}

TEST_F(LinksRealTest, AreFollowedInTextThatCanBeSelected)
{
    const QPoint link(20, 10);
    EXPECT_TRUE(shows(in(*selectable, link), Qt::PointingHandCursor));
    EXPECT_TRUE(shows(in(*selectable, QPoint(200, 10)), Qt::IBeamCursor));
    click(in(*selectable, link));
    EXPECT_TRUE(opens({"http://example.org/3"}));
    EXPECT_TRUE(selectable->isEditing());
}

TEST_F(LinksRealTest, AreCopiedForOtherPrograms)
{
    desktop::movePointer(in(*field, first));
    desktop::xdotool({"click", "3"});
    QWidget* menu = nullptr;
    ASSERT_TRUE(desktop::waitUntil([&] { return (menu = QApplication::activePopupWidget()) != nullptr; }));
    click(menu->mapToGlobal(QPoint(20, menu->height() / 2)));
    EXPECT_TRUE(desktop::waitUntil([] { return QApplication::activePopupWidget() == nullptr; }));
    desktop::OtherProcess other;
    other.start({"clipboard"});
    EXPECT_TRUE(other.says("\nhttp://example.org/1?a=b&c%C3%BC\nhttp://example.org/1?a=b&c\xC3\xBC\n"))
        << other.said().constData();
    other.drops("");

    field->setCanCopyURLs(false);
    desktop::movePointer(in(*field, first));
    desktop::xdotool({"click", "3"});
    click(in(*field, second));
    EXPECT_TRUE(opens({"http://example.org/2"})) << "no menu in the way";
}

} // namespace
