#pragma once

#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <memory>
#include <vector>

class NSString;

/// The pasteboards that have a name.
enum NSPasteboardName { NSGeneralPboard };

/// What can be on a pasteboard.
enum NSPasteboardType {
    NSURLPboardType,      // of several URLs the first
    NSStringPboardType,   // plain text
    NSFilenamesPboardType // absolute paths on this computer, at least one
};

/// Something that programs hand to each other: what was copied last, or what is being dragged. Belongs to the
/// user-interface thread. An application (`NSApplication`) has to exist.
class TESSALINE_EXPORT NSPasteboard final : public NSObject
{
public:
    struct Native;

    /// `NSGeneralPboard` is the desktop's clipboard.
    static Ref<NSPasteboard> pasteboardWithName(NSPasteboardName name);

    /// Empties the clipboard and says what is put there next, by nobody but the caller: there is no owner
    /// that would be asked for it later. That of a drag cannot be changed, which is reported.
    void declareTypes_owner(std::vector<NSPasteboardType> types, std::nullptr_t owner);
    /// Puts a text, or the URL that it is, on the clipboard, beside what was put there since the last
    /// declaration. False, with a line on standard error, and nothing changed, for null, a type that was not
    /// declared, a text that is no URL, and file names.
    bool setString_forType(NSString* string, NSPasteboardType type);

    /// What there is, whoever put it there.
    std::vector<NSPasteboardType> types() const;
    /// The text or URL; null if there is none. Those of a drag are there until the drag has ended.
    Ref<NSString> stringForType(NSPasteboardType type) const;
    /// The file names, in their order; null for other types, and if there are none. Those of a drag stay when
    /// it has ended.
    Ref<NSArray<NSString>> propertyListForType(NSPasteboardType type) const;

protected:
    ~NSPasteboard() override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSPasteboard(std::unique_ptr<Native> native);

    std::unique_ptr<Native> _native;
};
