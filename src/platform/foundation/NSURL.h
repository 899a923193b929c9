#pragma once

#include "platform/foundation/NSObject.h"

class NSPasteboard;
class NSString;

/// A well-formed URL; immutable. Relative ones count, too, and are not completed.
class TESSALINE_EXPORT NSURL final : public NSObject
{
public:
    /// Null for a text that is null, empty or not well-formed, as by a space or a stray per cent sign.
    /// Letters beyond ASCII may stand in it as people write them.
    static Ref<NSURL> URLWithString(NSString* text);

    /// That of a file or folder, by its absolute path. Null for null and an empty path.
    static Ref<NSURL> fileURLWithPath(NSString* path);

    /// The text that the URL was made of. Letters beyond ASCII are encoded only where the URL is handed to
    /// others.
    Ref<NSString> absoluteString() const;

    /// The path that a "file" URL names on this computer. Null for other URLs, and where that would be no
    /// text.
    Ref<NSString> path() const;

    /// Whether the other URL has the same text.
    bool isEqual(const NSObject* other) const override;

    /// Puts the URL on a pasteboard to which its type has been declared; otherwise that is reported, and
    /// nothing happens, as for null.
    void writeToPasteboard(NSPasteboard* pasteboard) const;

protected:
    ~NSURL() override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSURL(Ref<NSString> text);

    Ref<NSString> _text;
};
