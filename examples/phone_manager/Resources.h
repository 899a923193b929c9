#pragma once

#include <Tessaline.h>

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>

/// Null for bytes that are no UTF-8.
Ref<NSString> text(const std::string& utf8);

/// Has texts be in the language of the environment, or English, as long as none is chosen.
void useLanguageOfEnvironment();
/// The one of all texts, "de" or "en", kept for the user.
std::string language();
void setLanguage(const std::string& language);

/// The text for `key` in the user's language, with the values in the places of its "%s".
std::string localised(const std::string& key, std::initializer_list<std::string> values = {});
/// A group of contacts or messages, in the user's language if it is one of those that the program knows.
std::string shownGroup(const std::string& group);
/// The name of a file or folder as it can be shown.
std::string shownName(const std::string& name);
/// A moment, in seconds since 1970, in local time and in the user's language.
std::string shownDate(double moment);
/// The size of a file, and when it was changed.
std::string detailsOf(const std::filesystem::path& file);

/// Larger files are not read, since they are read at once.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} << 20;
/// What a file holds; nothing if it cannot be read, or is too large.
std::optional<std::string> bytesOf(const std::filesystem::path& file);

/// A small picture of a picture file, that fits into a size. Null if it cannot be read.
Ref<NSImage> thumbnailOf(const std::filesystem::path& file, NSSize largest);

/// A picture of the application's own by its name; kept, since cells do not keep what they show. Null if
/// there is none.
Ref<NSImage> icon(const std::string& name);
