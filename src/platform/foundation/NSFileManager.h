#pragma once

#include "platform/foundation/NSObject.h"

#include <string>

class NSString;

/// What is in the file system. Keeps nothing; from any thread.
class TESSALINE_EXPORT NSFileManager final : public NSObject
{
public:
    static Ref<NSFileManager> defaultManager();

    /// Whether a file, a folder or anything else is at `path`, and in `isDirectory`, unless that is null,
    /// whether it is a folder; links are followed. Nothing is at a path that is null or holds a NUL.
    bool fileExistsAtPath_isDirectory(const NSString* path, bool* isDirectory) const;

    /// The path as the system takes it, in UTF-8; empty, where nothing is, for one that is null or holds a
    /// NUL, behind which the system would not look.
    std::string fileSystemRepresentationWithPath(const NSString* path) const;
};
