#pragma once

#include "platform/foundation/NSObject.h"

#include <cstdint>

class NSString;

/// Files and folders by path. `const char*` paths are UTF-8 and, as everywhere in the system, relative to
/// the current folder unless they begin with a slash. Links are followed, if not said otherwise. Nothing is
/// kept and nothing locked: what a function answers may have changed when it is used.
///
/// A path that is null or holds a NUL is a path at which nothing is and nothing can be made.
class TESSALINE_EXPORT FileUtil final : public NSObject
{
public:
    /// Copies a file, or a folder with all it holds, to a path at which nothing is yet, in a folder that
    /// is. Links are copied as links, permissions and times of modification are kept. False, and nothing
    /// left behind, if that does not succeed: for instance if `to` lies in the folder `from`, or a part of
    /// it cannot be read or is neither a file, a folder nor a link.
    static bool Cp_To(const char* from, const char* to);

    /// "1023.0 B", "1.0 KB", "1.00 MB", "2048.00 GB": in the largest unit of which there is at least one,
    /// each 1024 of the one before. The decimal point is a point in every locale.
    static Ref<NSString> QxGetFormatSizeFromBytes(std::uint64_t bytes);

    /// The character set that an HTML file declares: what stands, without the blanks and tabs around it,
    /// between the first equals sign after the first "charset" (in either case) and the next quotation
    /// mark. That is "big5" in content="text/html; charset=big5", but empty in charset="big5". "UTF-8" if
    /// any of the three is missing, the file cannot be read, or more than `kLongestCharset` bytes stand
    /// there. Bytes that are not ASCII are taken for Latin-1.
    static Ref<NSString> getHtmlCharset(NSString* path);
    static constexpr std::size_t kLongestCharset = 65536;

    /// `path` itself, if no folder is there; otherwise the first of the names "photos(1)", "photos(2)" and
    /// so on for "photos" with which none is there (a file may be). What the name has from its last
    /// "(" on gives way to the number: "a(b)" becomes "a(1)". A folder of the root stays in it. Null for
    /// null.
    static Ref<NSString> getDirNewName(NSString* path);

    /// The first of "/a/report.pdf", "/a/report(1).pdf", "/a/report(2).pdf" and so on for "/a/report.txt" and
    /// the tail ".pdf" at which nothing is. The tail takes the place of all from the last full stop of
    /// the path on, in whichever of its parts that is; without one it follows the path. Null for a null
    /// path; a null tail is empty.
    static Ref<NSString> getFilePathNewName_withPosfix(NSString* path, NSString* tail);

    /// The full path of the running program; null if it is not valid UTF-8.
    static Ref<NSString> GetServerExePath();
    /// Its folder, with a slash at the end; null if the path is, or has no slash.
    static Ref<NSString> GetExeDir();
    /// The folder of the main bundle's resources, with a slash at the end; null if it is not valid UTF-8.
    static Ref<NSString> GetResourcesDir();

    /// Sets the time of modification of what is at `path` to a local time such as "2019-04-03 12:30:45", and
    /// returns whether that succeeded. (The time of creation cannot be set on all systems and is left.)
    /// A text that is no such time changes nothing; the answer then is whether something is there.
    static bool ModifyFileDateTime_withPath(const char* dateTime, const char* path);

    /// Whether a file, a folder or anything else is there.
    static bool isFileExist(const char* path);

    /// In bytes; 0 for what is not a file that can be read.
    static std::int64_t getFileSize(const char* path);

    /// Makes a folder and the folders around it that are missing. True, too, if anything is there already,
    /// even a file.
    static bool Mkdir(const char* path);
};
