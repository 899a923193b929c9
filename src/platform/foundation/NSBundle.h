#pragma once

#include "platform/foundation/NSObject.h"

#include <filesystem>
#include <memory>

class NSString;

/// A folder with resources: that of the running program, or any other. From any thread.
class TESSALINE_EXPORT NSBundle final : public NSObject
{
public:
    /// Largest file of localised texts that is read, in bytes.
    static constexpr std::size_t kMaxTableSize = std::size_t{16} * 1024 * 1024;

    /// The bundle of the running program: its resources are in the folder "Resources" beside the
    /// program, or in a Mac application folder in "Contents/Resources".
    static Ref<NSBundle> mainBundle();

    /// The bundle of the folder at `path`; always the same object for the same path, which lives as
    /// long as the process. Null if `path` is null or no folder.
    static Ref<NSBundle> bundleWithPath(NSString* path);

    /// The full path of the running program; null for other bundles, and if it is not valid UTF-8.
    Ref<NSString> executablePath() const;

    /// The full path, without a slash at the end, of the folder that holds the resources: "Resources" or
    /// "Contents/Resources" in the bundle's folder, or else that folder itself.
    Ref<NSString> resourcePath() const;

    /// The full path of the resource, a file or a folder, `name` with the extension `type`. Without a
    /// type the name is the whole name; without a name it is the first resource of the type in the order
    /// of their names. (An empty text counts as none.) Null if there is no such resource.
    Ref<NSString> pathForResource_ofType(NSString* name, NSString* type) const;

    /// The text for `key` in the file `tableName`.strings ("Localizable" without a table), which lies in the
    /// bundle's folder or among its resources. Where that has none the answer is `value`, or the key if that
    /// is null or empty; a null key is not looked up, and an empty text stands for it.
    ///
    /// The file holds lines such as `"Copy URL" = "URL kopieren";` in UTF-8 or, with a byte-order mark,
    /// UTF-16. It is read once, so later changes do not show. One beyond `kMaxTableSize` counts as missing;
    /// of one with a mistake, which is named in a line on standard error, the part before it counts.
    Ref<NSString> localizedStringForKey_value_table(NSString* key, NSString* value,
                                                    NSString* tableName) const;

protected:
    ~NSBundle() override;

private:
    struct Tables;

    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    NSBundle(std::filesystem::path folder, std::filesystem::path executable);

    std::filesystem::path resourceFolder() const;

    std::filesystem::path _folder;
    std::filesystem::path _executable; // empty but for the main bundle
    std::unique_ptr<Tables> _tables;   // that have been read
};
