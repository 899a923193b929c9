#include "platform/appkit/NSWorkspace.h"

#include "platform/foundation/NSURL.h"
#include "platform/foundation/Weak.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QTextBrowser>
#include <QUrl>

namespace
{

TEST(NSWorkspaceTest, OpensByTheDesktop)
{
    QTextBrowser program; // has a signal that takes URLs
    std::string opened;
    QObject::connect(&program, &QTextBrowser::anchorClicked,
                     [&](const QUrl& url) { opened = url.toEncoded().toStdString(); });
    QDesktopServices::setUrlHandler("x-test", &program, "anchorClicked");
    const Ref<NSWorkspace> workspace = NSWorkspace::sharedWorkspace();
    EXPECT_TRUE(workspace->openURL(NSURL::URLWithString(text("x-test:\xC3\xBC?a%20b").get()).get()));
    EXPECT_EQ(opened, "x-test:%C3%BC?a%20b");
    QDesktopServices::unsetUrlHandler("x-test");
    EXPECT_FALSE(workspace->openURL(nullptr));
}

TEST(NSWorkspaceTest, CanBeTheApplicationsOwn)
{
    class Own : public NSWorkspace
    {
    public:
        bool openURL(NSURL* url) override { return url == nullptr; }
    };
    Ref<Own> own = make<Own>();
    NSWorkspace::setSharedWorkspace(own);
    EXPECT_EQ(NSWorkspace::sharedWorkspace(), own);
    EXPECT_TRUE(NSWorkspace::sharedWorkspace()->openURL(nullptr));
    const Weak<NSWorkspace> kept(std::exchange(own, nullptr));
    EXPECT_NE(kept.get(), nullptr);
    NSWorkspace::setSharedWorkspace(nullptr);
    EXPECT_EQ(kept.get(), nullptr);
    EXPECT_FALSE(NSWorkspace::sharedWorkspace()->openURL(nullptr));
    EXPECT_EQ(NSWorkspace::sharedWorkspace(), NSWorkspace::sharedWorkspace());
}

} // namespace
