#include "platform/appkit/NSPasteboard.h"

#include "platform/foundation/NSURL.h"
#include "support/Drawing.h"
#include "support/RawData.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSysInfo>

#include <algorithm>

namespace
{

using Types = std::vector<NSPasteboardType>;

Ref<NSPasteboard> general()
{
    return NSPasteboard::pasteboardWithName(NSGeneralPboard);
}

const QMimeData& onClipboard()
{
    return *QGuiApplication::clipboard()->mimeData();
}

/// Has another program copy a list of URLs.
void copy(const QByteArray& list)
{
    QGuiApplication::clipboard()->setMimeData(new RawData("text/uri-list", list));
}

TEST(NSPasteboardTest, GivesURLAndTextToOtherPrograms)
{
    const Ref<NSPasteboard> pasteboard = general();
    const Ref<NSURL> url = NSURL::URLWithString(text("http://example.com/\xC3\xBC?a%20b").get());
    pasteboard->declareTypes_owner({NSURLPboardType, NSStringPboardType}, nullptr);
    EXPECT_EQ(pasteboard->types(), Types{});
    url->writeToPasteboard(pasteboard.get());
    EXPECT_TRUE(pasteboard->setString_forType(url->absoluteString().get(), NSStringPboardType));
    EXPECT_EQ(onClipboard().data("text/uri-list").trimmed(), "http://example.com/%C3%BC?a%20b");
    EXPECT_EQ(onClipboard().data("text/plain"), "http://example.com/\xC3\xBC?a%20b");
    EXPECT_EQ(pasteboard->types(), (Types{NSURLPboardType, NSStringPboardType}));
    EXPECT_EQ(utf8(pasteboard->stringForType(NSURLPboardType)), "http://example.com/%C3%BC?a%20b");
    EXPECT_EQ(utf8(pasteboard->stringForType(NSStringPboardType)), utf8(url->absoluteString()));
    EXPECT_EQ(pasteboard->propertyListForType(NSFilenamesPboardType), nullptr);

    pasteboard->declareTypes_owner({NSStringPboardType, NSFilenamesPboardType}, nullptr);
    EXPECT_TRUE(pasteboard->setString_forType(text("").get(), NSStringPboardType));
    EXPECT_EQ(utf8(general()->stringForType(NSStringPboardType)), "");
    EXPECT_EQ(pasteboard->stringForType(NSURLPboardType), nullptr) << "gone with the new declaration";
    testing::internal::CaptureStderr();
    url->writeToPasteboard(pasteboard.get());
    EXPECT_FALSE(pasteboard->setString_forType(text("/a").get(), NSFilenamesPboardType));
    EXPECT_FALSE(pasteboard->setString_forType(nullptr, NSStringPboardType));
    pasteboard->declareTypes_owner({NSURLPboardType}, nullptr);
    EXPECT_FALSE(pasteboard->setString_forType(text("a b").get(), NSURLPboardType));
    EXPECT_FALSE(pasteboard->setString_forType(text("").get(), NSURLPboardType));
    url->writeToPasteboard(nullptr);
    const std::string undeclared = "setString_forType: there is no text of a type that has been declared\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), undeclared + undeclared + undeclared + undeclared +
                                                          undeclared +
                                                          "writeToPasteboard: there is no pasteboard\n");
    EXPECT_EQ(pasteboard->types(), Types{});
}

TEST(NSPasteboardTest, NamesTheFilesOfAList)
{
    const QByteArray host = QSysInfo::machineHostName().toUtf8();
    const struct {
        QByteArray list;
        const char* names; // each in brackets
    } cases[] = {
        {"file:///a\r\nfile:///b\r\n", "[/a][/b]"},
        {"file:///b\nfile:///a", "[/b][/a]"},
        {"\r\n\n# file:///no\r\nfile:///a\n\n", "[/a]"},
        {"file:/p\nFILE:///q\nfile://localhost/r\nfile://LocalHost/s", "[/p][/q][/r][/s]"},
        {"file://" + host + "/a\nfile://" + host.toUpper() + "/b", "[/a][/b]"},
        {"file://elsewhere/a\nfile://localhost.elsewhere/a\nfile:///b", "[/b]"},
        {"file:///a%20b%C3%A4%23%3f%25\nfile:///c d\xC3\xA4", "[/a b\xC3\xA4#?%][/c d\xC3\xA4]"},
        {"file:///100%\nfile:///a%2", "[/100%][/a%2]"},
        {"file:///a%00b\nfile:///d", "[/d]"},
        {QByteArray("file:///a\0b\nfile:///c\0", 22) + "\nfile:///d\r\n" + QByteArray(1, '\0'), "[/d]"},
        {"file:///%FF\nfile:///%C3\nfile:///\xFF\nfile:///%ED%A0%80\nfile:///%C0%80\nfile:///d", "[/d]"},
        {"file:///a#b\nfile:///a?b\nfile:///d", "[/d]"},
        {"http://localhost/a\nfile:a\nfile:\nfile://localhost\n/a\na\nfiles:///a\nfile:///d", "[/d]"},
        {"file:///folder/", "[/folder/]"},
        {"# nothing\r\n\r\nhttp://example.com/\r\n", ""},
        {"", ""},
    };
    for (const auto& [list, names] : cases) {
        copy(list);
        std::string found;
        const Ref<NSArray<NSString>> paths = general()->propertyListForType(NSFilenamesPboardType);
        for (std::size_t i = 0; paths && i < paths->count(); ++i) {
            found += "[" + utf8(paths->objectAtIndex(i)) + "]";
        }
        EXPECT_EQ(found, names) << list.toStdString();
        const Types types = general()->types();
        EXPECT_EQ(std::ranges::count(types, NSFilenamesPboardType), found.empty() ? 0 : 1);
        EXPECT_EQ(general()->propertyListForType(NSURLPboardType), nullptr);
    }
    copy("# first\r\n\r\nhttp://example.com/a%20b\r\nfile:///a\r\n");
    EXPECT_EQ(utf8(general()->stringForType(NSURLPboardType)), "http://example.com/a%20b");
    EXPECT_EQ(general()->stringForType(NSStringPboardType), nullptr);
    copy("#\n");
    EXPECT_EQ(general()->stringForType(NSURLPboardType), nullptr);
}

} // namespace
