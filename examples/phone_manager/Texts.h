#pragma once

#include <platform/foundation/NSString.h>

#include <initializer_list>
#include <string>

/// Null for bytes that are no UTF-8.
Ref<NSString> text(const std::string& utf8);

/// The text for `key` in the user's language, with the values in the places of its "%s".
std::string localised(const std::string& key, std::initializer_list<std::string> values = {});

/// The name of a file or folder as it can be shown.
std::string shownName(const std::string& name);
