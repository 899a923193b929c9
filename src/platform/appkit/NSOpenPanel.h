#pragma once

#include "platform/foundation/NSArray.h"
#include "platform/foundation/Property.h"

class NSString;
class NSURL;

/// How the user has ended something that was run modally.
using NSModalResponse = long;
inline constexpr NSModalResponse NSModalResponseCancel = 0;
inline constexpr NSModalResponse NSModalResponseOK = 1;

/// Asks the user for files or folders that exist. The desktop's own panel shows where it has one, else the
/// toolkit's; its texts are in the language of the system. Can be run any number of times. A file whose name
/// is no UTF-8 cannot be chosen.
class TESSALINE_EXPORT NSOpenPanel : public NSObject
{
public:
    NSOpenPanel();

    static Ref<NSOpenPanel> openPanel();

    /// What can be chosen. Default: files, and no folders. Where both can, the button chooses a folder that
    /// is selected, which else it opens.
    bool canChooseFiles() const { return _canChooseFiles; }
    void setCanChooseFiles(bool can) { _canChooseFiles = can; }
    bool canChooseDirectories() const { return _canChooseDirectories; }
    void setCanChooseDirectories(bool can) { _canChooseDirectories = can; }
    /// Whether more than one can be chosen; where files cannot, it is always one. Default no.
    bool allowsMultipleSelection() const { return _allowsMultipleSelection; }
    void setAllowsMultipleSelection(bool allows) { _allowsMultipleSelection = allows; }

    /// The extensions, such as "jpg" and "tar.gz", of the files that can be chosen, in lower or upper case;
    /// null, the default, or empty for all files.
    Ref<NSArray<NSString>> allowedFileTypes() const;
    void setAllowedFileTypes(Ref<NSArray<NSString>> types);

    /// Whether the user can make folders there, and rename and delete what there is. Default no.
    bool canCreateDirectories() const { return _canCreateDirectories; }
    void setCanCreateDirectories(bool can) { _canCreateDirectories = can; }

    /// The folder that shows at first. Null, the default, or none that exists for the one that the toolkit
    /// chooses, where the user was the last time.
    Ref<NSURL> directoryURL() const;
    void setDirectoryURL(Ref<NSURL> url);

    /// What the panel is called, and its button that chooses. Copied; null, the default, for what the toolkit
    /// calls them.
    Ref<NSString> title() const;
    void setTitle(Ref<NSString> title);
    Ref<NSString> prompt() const;
    void setPrompt(Ref<NSString> prompt);

    /// Shows the panel, over the key window if there is one, and returns when the user has chosen or
    /// cancelled, with `NSModalResponseOK` or `NSModalResponseCancel`. Meanwhile events are handled, but the
    /// user can do nothing else, and what belongs to the caller may go. When the window over which it shows
    /// disappears, that cancels. That nothing can be chosen, or the panel shows already, is reported and
    /// cancels.
    NSModalResponse runModal();

    /// What was chosen when the panel was run last, in the order of the panel; empty if that was nothing.
    /// All are URLs of files and folders of this computer.
    Ref<NSArray<NSURL>> URLs() const;

protected:
    ~NSOpenPanel() override;

private:
    bool _canChooseFiles = true;
    bool _canChooseDirectories = false;
    bool _allowsMultipleSelection = false;
    bool _canCreateDirectories = false;
    bool _running = false;
    Ref<NSArray<NSString>> _allowedFileTypes;
    Ref<NSURL> _directoryURL;
    CopyProperty<NSString> _title;
    CopyProperty<NSString> _prompt;
    Ref<NSArray<NSURL>> _urls;
};
