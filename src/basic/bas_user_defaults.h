#pragma once

#include "platform/foundation/Export.h"

#include <rapidjson/fwd.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

/// A colour setting: three integers as they stand in the file, not clamped (writers use 0 to 255).
struct BASRGB {
    std::int32_t red = 0;
    std::int32_t green = 0;
    std::int32_t blue = 0;

    bool operator==(const BASRGB&) const = default;
};

/// A named set of settings kept in one JSON file, and the process-wide registry of such sets.
///
/// A store reads its file once, when it is created; reads and writes of single settings then work on
/// memory until `WriteAll` writes the whole set back. All names, paths, keys and values are
/// NUL-terminated UTF-8 and are copied. Keys are compared byte by byte. Of members that carry the same
/// key all are kept, and the first one is read and written.
///
/// The file is a JSON object; a member is a setting. What is read from a file is bounded, since a file
/// may be broken or hostile: at most `kMaxFileSize` bytes, as it stands and in the form that `WriteAll`
/// would give it, and objects and arrays nested at most `kMaxNesting` levels deep, the root being the
/// first. A file beyond these bounds, a number whose digits or exponent lie beyond a double's, and a root
/// that is a plain value all count as a parse error, which leaves the store empty. A root that is an array
/// is well-formed, but holds no settings: that load fails too, with a line on standard error. Loading the
/// worst of files takes about half a gigabyte for the moment.
///
/// Integers keep all their digits within 64 bits. Every other number is held as a double and written with
/// six significant digits: 7.0 becomes 7, which is an integer when it is read again.
///
/// Asking for a value that is not there, or not of the asked type, is a mistake of the caller: it is
/// named in one line on standard error and answered with 0, an empty text, or 0 for each colour
/// component that is missing. Test with `HasMember` first. A null pointer as key is a key that is not
/// there; setting it, or setting a null pointer as text, changes nothing and is named in the same way.
///
/// Memory: texts that are replaced, and contents that are loaded over, stay allocated until the store
/// is destroyed.
///
/// Threads: none of this is locked; the calls on one store, and those on the registry, must not overlap.
class TESSALINE_EXPORT BASUserDefaults
{
public:
    /// Deepest nesting of objects and arrays that a file may have, the root included.
    static constexpr int kMaxNesting = 512;
    /// Largest file that is read, in bytes. `WriteAll` writes a larger one, too, and says so on standard
    /// error.
    static constexpr std::size_t kMaxFileSize = std::size_t{64} * 1024 * 1024;

    /// Creates a store with the content of the file at `path`, or an empty one if that cannot be loaded.
    /// `result`, unless null, receives 1 if the load succeeded and 0 if not.
    BASUserDefaults(const char* name, const char* path, std::int32_t* result);
    ~BASUserDefaults();
    BASUserDefaults(const BASUserDefaults&) = delete;
    BASUserDefaults& operator=(const BASUserDefaults&) = delete;

    /// Creates a store and registers it under `name`, whether or not its file loaded; returns whether it
    /// did. Registered stores live until the process ends. A store that had the name before stays alive
    /// for those who hold a pointer to it.
    static bool InitUserDefaults(const char* name, const char* path);

    /// The store registered under `name`, or null. It belongs to the registry.
    static BASUserDefaults* GetUserDefaults(const char* name);

    /// Whether the load at construction succeeded; later loads do not change the answer.
    bool IsOk() const;

    /// Loads the file again. If it cannot be read, nothing changes; if it does not parse, "parse error"
    /// goes to standard output and the store becomes empty. Returns whether the file loaded.
    bool ReadAll();

    /// Writes all settings to the file, indented by four spaces, in the order in which they were read
    /// and added. A file that cannot be opened or written is not reported.
    void WriteAll() const;

    bool HasMember(const char* key) const;

    /// The value must be a number written without fraction or exponent that fits 32 bits with sign.
    std::int32_t GetInt(const char* key) const;
    void SetInt(const char* key, std::int32_t value);

    /// The text belongs to the store. It stays valid until this key is set, the file is loaded again or
    /// the store is destroyed, whatever happens to other keys.
    const char* GetString(const char* key) const;
    /// Replaces a value of any type, in its place, or appends a new setting. `value` may lie inside a
    /// text of this store.
    void SetString(const char* key, const char* value);

    /// Reads a text such as "32,186,234": each number may have blanks and a sign before it and ends at
    /// the first other character; one without digits is 0, one beyond 32 bits takes the nearest limit. A
    /// missing key yields 0, 0, 0 without a diagnostic.
    BASRGB GetRGB(const char* key) const;

    /// The value under `key`, whatever its type, or a null value that all stores share. Valid as long as
    /// no setting is added and the file is not loaded again.
    const rapidjson::Value& GetValueObject(const char* key) const;

private:
    rapidjson::Value* Find(const char* key) const;
    void Set(const char* key, rapidjson::Value& value);

    std::string name_;
    std::string path_;
    std::unique_ptr<rapidjson::Document> doc_; // its root is always an object
    bool ok_ = false;
};
