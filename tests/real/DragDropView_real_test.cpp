// Drags from another program, and what is copied for one.

#include "window/DragDropView.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSURL.h"
#include "real/Desktop.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QPoint>
#include <QProcess>
#include <QUrl>

#include <functional>

namespace
{

constexpr int kManyFiles = 100'000;

class Taker : public NSObject, public DragDropViewDeletegate
{
public:
    void dragDropViewFileList(NSArray<NSString>* paths) override
    {
        ++calls;
        list = paths;
        if (onFiles) {
            onFiles();
        }
    }

    int calls = 0;
    Ref<NSArray<NSString>> list;
    std::function<void()> onFiles;
};

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

    bool says(const char* line)
    {
        return desktop::waitUntil([&] {
            said += other.readAllStandardOutput();
            return said.contains(line);
        });
    }

    /// Has the other program drag `bytes` to the view, where they are not dropped yet.
    void drag(const std::string& bytes, const char* format, const char* answer)
    {
        folder.write("dragged", bytes);
        said.clear();
        other.start(OTHER_PROCESS, {"drag", format, QString::fromStdString(pathOf("dragged"))});
        EXPECT_TRUE(says("ready\n"));
        const QPoint from(750, 150);
        desktop::movePointer(from);
        desktop::press();
        const int entries = target->entries;
        // It takes moves for a drag to begin, and one to get to the view.
        int step = 0;
        EXPECT_TRUE(desktop::waitUntil([&] {
            desktop::movePointer(place() + QPoint(++step % 20, 0));
            return target->entries > entries;
        }));
        EXPECT_TRUE(says(answer));
    }

    /// Drops it and waits for what the other program is told.
    bool dropIs(const char* answer)
    {
        desktop::release();
        const bool answered = says(answer);
        other.waitForFinished();
        return answered;
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
    Ref<Taker> taker = make<Taker>();
    QProcess other;
    QByteArray said;
};

TEST_F(DragDropViewRealTest, TakesFilesOfAnotherProgram)
{
    target->setFilePostfix(text("vcf,csv"));
    drag(urlOf("two words.vcf") + "\r\n" + urlOf("\xC3\x84pfel.csv") + "\r\nfile:" + pathOf("100%25.jpg") +
             "\n",
         "text/uri-list", "would copy");
    EXPECT_EQ(taker->calls, 0) << "before the drop";
    EXPECT_TRUE(dropIs("copied"));
    EXPECT_EQ(handed(), "[" + pathOf("two words.vcf") + "][" + pathOf("\xC3\x84pfel.csv") + "][" +
                            pathOf("100%.jpg") + "]");

    drag(urlOf("a folder") + "\r\n" + urlOf("two words.vcf") + "\r\n", "text/uri-list", "would copy");
    EXPECT_TRUE(dropIs("ignored"));
    EXPECT_EQ(handed(), "[" + pathOf("two words.vcf") + "]");
    EXPECT_EQ(taker->calls, 2);

    drag(urlOf("100%.jpg"), "text/uri-list", "would copy");
    desktop::movePointer(QPoint(500, 700));
    EXPECT_TRUE(desktop::waitUntil([&] { return target->exits == 1; }));
    EXPECT_TRUE(dropIs("ignored"));
    drag("file:///tmp/a", "text/plain", "");
    EXPECT_TRUE(dropIs("ignored"));
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
    EXPECT_TRUE(dropIs("copied"));
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
    EXPECT_TRUE(dropIs("copied"));
    EXPECT_EQ(gone.get(), nullptr);
}

TEST_F(DragDropViewRealTest, StandsBesideAClipboardThatOthersRead)
{
    const Ref<NSURL> url = NSURL::URLWithString(text("http://example.com/\xC3\xBC").get());
    const Ref<NSPasteboard> pasteboard = NSPasteboard::pasteboardWithName(NSGeneralPboard);
    pasteboard->declareTypes_owner({NSURLPboardType, NSStringPboardType}, nullptr);
    url->writeToPasteboard(pasteboard.get());
    pasteboard->setString_forType(url->absoluteString().get(), NSStringPboardType);
    other.start(OTHER_PROCESS, {"clipboard"});
    EXPECT_TRUE(says("\nhttp://example.com/%C3%BC\nhttp://example.com/\xC3\xBC\n")) << said.toStdString();
    other.waitForFinished();
}

} // namespace
