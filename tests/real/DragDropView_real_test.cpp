// Drags from another program.

#include "window/DragDropView.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "real/Desktop.h"
#include "real/OtherProcess.h"
#include "support/Drawing.h"
#include "support/FileTaker.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QPoint>
#include <QUrl>

#include <functional>

namespace
{

constexpr int kManyFiles = 100'000;

/// Counts the drags that it learns of.
class Target : public DragDropView
{
public:
    NSDragOperation draggingEntered(NSDraggingInfo* drag) override
    {
        ++entries;
        return DragDropView::draggingEntered(drag);
    }
    void draggingExited(NSDraggingInfo* /*drag*/) override { ++exits; }

    int entries = 0;
    int exits = 0;
};

class DragDropViewRealTest : public testing::Test
{
protected:
    DragDropViewRealTest()
    {
        content->addSubview(target);
        target->setDelegate(taker.get());
        window->setContentView(content);
        window->makeKeyAndOrderFront();
        std::filesystem::create_directory(folder.path() / "a folder");
        for (const char* name : {"two words.vcf", "\xC3\x84pfel.csv", "100%.jpg"}) {
            folder.write(name, "");
        }
    }

    std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }
    std::string urlOf(const std::string& name) const
    {
        return QUrl::fromLocalFile(QString::fromStdString(pathOf(name))).toEncoded().toStdString();
    }

    /// Has the other program drag `bytes` to the view, where they are not dropped yet.
    void drag(const std::string& bytes, const char* format, const char* answer)
    {
        const int entries = target->entries;
        other.drag(bytes, format, place(), [&] { return target->entries > entries; });
        EXPECT_TRUE(other.says(answer));
    }

    static QPoint place() { return {150, 350}; }

    std::string handed() const
    {
        std::string paths;
        for (const Ref<NSString>& path : *taker->list) {
            paths += "[" + utf8(path) + "]";
        }
        return paths;
    }

    const TemporaryFolder folder;
    Ref<NSApplication> application = NSApplication::sharedApplication();
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(100.0, 400.0, 200.0, 100.0), 0);
    Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
    Ref<Target> target = [] {
        Ref<Target> view = make<Target>();
        view->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
        return view;
    }();
    Ref<FileTaker> taker = make<FileTaker>();
    desktop::OtherProcess other;
};

TEST_F(DragDropViewRealTest, TakesFilesOfAnotherProgram)
{
    target->setFilePostfix(text("vcf,csv"));
    drag(urlOf("two words.vcf") + "\r\n" + urlOf("\xC3\x84pfel.csv") + "\r\nfile:" + pathOf("100%25.jpg") +
             "\n",
         "text/uri-list", "would copy");
    EXPECT_EQ(taker->calls, 0) << "before the drop";
    EXPECT_TRUE(other.drops("copied"));
    EXPECT_EQ(handed(), "[" + pathOf("two words.vcf") + "][" + pathOf("\xC3\x84pfel.csv") + "][" +
                            pathOf("100%.jpg") + "]");

    drag(urlOf("a folder") + "\r\n" + urlOf("two words.vcf") + "\r\n", "text/uri-list", "would copy");
    EXPECT_TRUE(other.drops("ignored"));
    EXPECT_EQ(handed(), "[" + pathOf("two words.vcf") + "]");
    EXPECT_EQ(taker->calls, 2);

    drag(urlOf("100%.jpg"), "text/uri-list", "would copy");
    desktop::movePointer(QPoint(500, 700));
    EXPECT_TRUE(desktop::waitUntil([&] { return target->exits == 1; }));
    desktop::release();
    other.kill(); // outside of all windows, Qt as the source may wait for an answer that nobody gives
    drag("file:///tmp/a", "text/plain", "");
    EXPECT_TRUE(other.drops("ignored"));
    EXPECT_TRUE(desktop::waitUntil([&] { return target->exits == 2; }));
    EXPECT_EQ(taker->calls, 2);
}

TEST_F(DragDropViewRealTest, TakesManyFiles)
{
    std::string list;
    for (int i = 0; i < kManyFiles; ++i) {
        list += urlOf("missing" + std::to_string(i) + ".vcf") + "\r\n";
    }
    drag(list, "text/uri-list", "would copy");
    EXPECT_TRUE(other.drops("copied"));
    EXPECT_EQ(taker->list->count(), static_cast<std::size_t>(kManyFiles));
}

TEST_F(DragDropViewRealTest, MayEndWithItsWindowByItsDelegate)
{
    const Weak<NSWindow> gone(window);
    taker->onFiles = [&] {
        target = nullptr;
        content = nullptr;
        window = nullptr;
    };
    drag(urlOf("two words.vcf"), "text/uri-list", "would copy");
    EXPECT_TRUE(other.drops("copied"));
    EXPECT_EQ(gone.get(), nullptr);
}

} // namespace
