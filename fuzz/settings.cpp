// Feeds arbitrary bytes to the settings store as its file, exercises every operation and checks that
// what was read survives being written and read again.

#include "basic/bas_user_defaults.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace
{

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s\n", what);
        std::abort();
    }
}

const std::string& path()
{
    static const std::string value = "/dev/shm/settings-fuzz-" + std::to_string(getpid());
    return value;
}

void writeFile(const std::uint8_t* data, std::size_t size)
{
    std::FILE* file = std::fopen(path().c_str(), "wb");
    require(file != nullptr, "the work file opens");
    std::fwrite(data, 1, size, file);
    std::fclose(file);
}

std::string readFile()
{
    std::FILE* file = std::fopen(path().c_str(), "rb");
    require(file != nullptr, "the work file opens");
    std::fseek(file, 0, SEEK_END);
    std::string text(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    require(std::fread(text.data(), 1, text.size(), file) == text.size(), "the work file reads");
    std::fclose(file);
    return text;
}

int nestingOf(const rapidjson::Value& value)
{
    int deepest = 0;
    if (value.IsArray()) {
        for (const auto& element : value.GetArray()) {
            deepest = std::max(deepest, nestingOf(element));
        }
    } else if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            deepest = std::max(deepest, nestingOf(member.value));
        }
    }
    return deepest + (value.IsArray() || value.IsObject() ? 1 : 0);
}

/// Whether the store has to load a file: JSON without exponents or long numbers, within the limits.
bool isFlawless(const std::string& text)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(text.c_str());
    return !document.HasParseError() && document.IsObject() &&
           nestingOf(document) <= BASUserDefaults::kMaxNesting &&
           text.find_first_of("eE") == std::string::npos && text.size() < 300;
}

void readEverySetting(const BASUserDefaults& store)
{
    for (const char* key : {"", "k", "a", "accent", "no such key"}) {
        store.GetRGB(key);
        store.GetInt(key);
        store.GetString(key);
        require(store.HasMember(key) || store.GetValueObject(key).IsNull(), "missing keys are null");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    writeFile(data, size);
    std::int32_t result = -1;
    BASUserDefaults store("fuzz", path().c_str(), &result);
    require(result == (store.IsOk() ? 1 : 0), "the result is the load's");
    readEverySetting(store);
    const std::string text(reinterpret_cast<const char*>(data), size);
    require(store.IsOk() || !isFlawless(text), "a flawless file loads");

    store.WriteAll();
    require(store.IsOk() || readFile() == "{}", "a failed load leaves an empty store");
    // Once more, since a negative zero such as -0.0 is written as -0, which is the integer 0.
    require(store.ReadAll(), "what was written can be read");
    store.WriteAll();
    const std::string written = readFile();
    require(store.ReadAll(), "what was written can be read");
    store.WriteAll();
    require(readFile() == written, "reading and writing again changes nothing");

    store.SetInt("k", -5);
    store.SetString("a", "1, 2,3");
    require(store.GetInt("k") == -5, "an integer reads back");
    require(store.GetRGB("a") == BASRGB{1, 2, 3}, "a colour reads back");
    store.SetString("k", store.GetString("a") + 3);
    require(std::string(store.GetString("k")) == "2,3", "a text set from another reads back");
    unlink(path().c_str());
    return 0;
}
