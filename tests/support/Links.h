#pragma once

#include "platform/appkit/NSWorkspace.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSURL.h"
#include "support/Drawing.h"

#include <string>
#include <vector>

/// Stands for the desktop as long as it lives, and writes down what it is to open.
class OpenedLinks
{
public:
    OpenedLinks() { NSWorkspace::setSharedWorkspace(_workspace); }
    ~OpenedLinks() { NSWorkspace::setSharedWorkspace(nullptr); }
    OpenedLinks(const OpenedLinks&) = delete;
    OpenedLinks& operator=(const OpenedLinks&) = delete;

    /// What was opened since the last call.
    std::vector<std::string> take() { return std::exchange(_workspace->opened, {}); }

private:
    class Workspace final : public NSWorkspace
    {
    public:
        bool openURL(NSURL* url) override
        {
            opened.push_back(url != nullptr ? utf8(url->absoluteString()) : "null");
            return true;
        }

        std::vector<std::string> opened;
    };

    Ref<Workspace> _workspace = make<Workspace>();
};

/// A text of several pieces, some of which are links.
class LinkedText
{
public:
    LinkedText& plain(const char* words) { return link(words, nullptr); }
    LinkedText& link(const char* words, const Ref<NSObject>& url)
    {
        _pieces.push_back({words, url});
        return *this;
    }

    Ref<NSAttributedString> text() const
    {
        std::string all;
        for (const Piece& piece : _pieces) {
            all += piece.words;
        }
        Ref<NSMutableAttributedString> result =
            make<NSMutableAttributedString>()->initWithString(::text(all.c_str()).get());
        std::size_t start = 0;
        for (const Piece& piece : _pieces) {
            const std::size_t length = ::text(piece.words.c_str())->length();
            result->addAttribute_value_range(NSLinkAttributeName, piece.url, {start, length});
            start += length;
        }
        return result;
    }

private:
    struct Piece {
        std::string words;
        Ref<NSObject> url;
    };

    std::vector<Piece> _pieces;
};

inline Ref<NSURL> url(const char* utf8)
{
    return NSURL::URLWithString(text(utf8).get());
}
