#include "window/DragDropView.h"

#include "platform/appkit/NSWindow.h"
#include "support/Drags.h"
#include "support/Drawing.h"
#include "support/FileTaker.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

const std::string kLogged = "draggingEntered\n";

class DragDropViewTest : public testing::Test
{
protected:
    DragDropViewTest()
    {
        view->setDelegate(taker.get());
        std::filesystem::create_directories(folder.path() / "old.files");
        for (const char* name : {"a.vcf", "photo.JPG", "plain", "old.files/readme", "ends."}) {
            folder.write(name, "");
        }
    }

    QByteArray listOf(const std::vector<const char*>& names) const
    {
        QByteArray list;
        for (const char* name : names) {
            list += "file://" + QByteArray((folder.path() / name).c_str()) + "\r\n";
        }
        return list;
    }

    /// What the source learns of a drop of these files and folders.
    Qt::DropAction drop(const std::vector<const char*>& names)
    {
        Drag drag(*view);
        drag.data.setData("text/uri-list", listOf(names));
        testing::internal::CaptureStderr();
        EXPECT_TRUE(drag.enter());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), kLogged);
        EXPECT_EQ(drag.moveTo(), Qt::CopyAction);
        return drag.drop();
    }

    /// The names that the delegate was handed, each in brackets.
    std::string handed() const
    {
        std::string names;
        for (const Ref<NSString>& path : *taker->list) {
            names += "[" + utf8(path).substr(folder.path().string().size() + 1) + "]";
        }
        return names;
    }

    const TemporaryFolder folder;
    Ref<DragDropView> view = make<DragDropView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 100.0));
    Ref<FileTaker> taker = make<FileTaker>();
};

TEST_F(DragDropViewTest, HandsFilesOverAndTakesThemByTheirExtensions)
{
    const struct {
        const char* extensions;
        std::vector<const char*> names;
        const char* handed;
        bool taken;
    } cases[] = {
        {"vcf,csv", {"a.vcf"}, "[a.vcf]", true},
        {"vcf", {"a.b.vcf"}, "[a.b.vcf]", true},
        {"xvcfx", {"a.vcf"}, "[a.vcf]", true},
        {"csv", {"a.vcf"}, "[a.vcf]", false},
        {"vc", {"a.vcf"}, "[a.vcf]", false},
        {"jpg", {"photo.JPG"}, "[photo.JPG]", true},
        {"JPG", {"missing.jpg"}, "[missing.jpg]", true},
        {"jpg", {"a.vcf", "photo.JPG"}, "[a.vcf][photo.JPG]", true},
        {"jpg", {"photo.JPG", "a.vcf"}, "[photo.JPG][a.vcf]", true},
        {"jpg", {"old.files"}, "", false},
        {"jpg", {"photo.JPG", "old.files", "a.vcf"}, "[photo.JPG][a.vcf]", false},
        {"all type", {"plain", "a.vcf"}, "[plain][a.vcf]", true},
        {"all type", {"old.files", "plain"}, "[plain]", false},
        {"All type", {"plain"}, "[plain]", false},
        {"all types", {"a.vcf"}, "[a.vcf]", false},
        {"files/readme", {"old.files/readme"}, "[old.files/readme]", true},
        {"readme", {"old.files/readme"}, "[old.files/readme]", false},
        {"plain", {"plain"}, "[plain]", false},
        {"ends", {"ends."}, "[ends.]", false},
        {"", {"ends."}, "[ends.]", false},
        {nullptr, {"ends."}, "[ends.]", true},
        {nullptr, {"plain"}, "[plain]", true},
        {nullptr, {"plain", "old.files"}, "[plain]", false},
    };
    for (const auto& [extensions, names, expected, taken] : cases) {
        view->setFilePostfix(NSString::stringWithUTF8String(extensions));
        const int calls = taker->calls;
        EXPECT_EQ(drop(names), taken ? Qt::CopyAction : Qt::IgnoreAction)
            << utf8(view->filePostfix()) << expected;
        EXPECT_EQ(handed(), expected);
        EXPECT_EQ(taker->calls, calls + 1);
    }
}

TEST_F(DragDropViewTest, RefusesWhatHoldsNoFiles)
{
    view->setFilePostfix(NSString::stringWithCharacters(DragDropView::kAllTypes));
    Drag texts(*view);
    texts.data.setText("file:///a");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(texts.enter());
    EXPECT_EQ(texts.moveTo(), Qt::IgnoreAction);
    texts.leave();
    texts.enter();
    EXPECT_EQ(texts.drop(), Qt::IgnoreAction);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), kLogged + kLogged) << "whatever is dragged";
    EXPECT_EQ(taker->calls, 0);

    const Ref<NSPasteboard> general = NSPasteboard::pasteboardWithName(NSGeneralPboard);
    general->declareTypes_owner({NSStringPboardType}, nullptr);
    const Ref<NSDraggingInfo> empty = make<NSDraggingInfo>(general, NSPoint{});
    const Ref<NSDraggingInfo> nothing = make<NSDraggingInfo>(nullptr, NSPoint{});
    for (NSDraggingInfo* drag : {empty.get(), nothing.get(), static_cast<NSDraggingInfo*>(nullptr)}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(view->draggingEntered(drag), NSDragOperationNone);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), kLogged);
        EXPECT_TRUE(view->performDragOperation(drag)) << "of all types";
        view->setFilePostfix(nullptr);
        EXPECT_FALSE(view->performDragOperation(drag));
        EXPECT_TRUE(view->prepareForDragOperation(drag));
        EXPECT_EQ(taker->list->count(), 0U);
        view->setFilePostfix(text("all type"));
    }
}

TEST_F(DragDropViewTest, MayBeEndedByItsDelegate)
{
    const Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 100.0));
    content->addSubview(view);
    const Weak<DragDropView> weak(view);
    taker->onFiles = [&] {
        view->removeFromSuperview();
        view = nullptr;
        taker = nullptr;
    };
    const Weak<FileTaker> weakTaker(taker);
    Drag drag(*view);
    drag.data.setData("text/uri-list", listOf({"plain"}));
    drag.enter();
    EXPECT_EQ(drag.drop(), Qt::CopyAction) << "its source learns what became of it all the same";
    EXPECT_EQ(weak.get(), nullptr);
    EXPECT_EQ(weakTaker.get(), nullptr);
}

TEST_F(DragDropViewTest, NeedsNoDelegate)
{
    view->setFilePostfix(text("vcf"));
    taker = nullptr;
    EXPECT_EQ(view->delegate(), nullptr) << "not retained";
    EXPECT_EQ(drop({"a.vcf"}), Qt::CopyAction);
    const Ref<NSObject> other = make<NSObject>();
    view->setDelegate(other.get());
    EXPECT_EQ(drop({"a.vcf"}), Qt::CopyAction) << "nor one that takes files";
    EXPECT_EQ(operationsOf(*view), Operations{});
}

} // namespace
