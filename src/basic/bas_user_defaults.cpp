#include "basic/bas_user_defaults.h"

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace
{

std::map<std::string, BASUserDefaults*> gNameToDefault;

constexpr const char* kNoText = "is not a text setting";

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// One line on standard error; `subject` is the key or path in question and may be null.
void Diagnose(const char* operation, const char* subject, const char* problem)
{
    std::fprintf(stderr, "BASUserDefaults::%s: \"%s\" %s\n", operation,
                 subject == nullptr ? "(null)" : subject, problem);
}

/// `text`, or an empty text in place of a null pointer.
const char* CheckedText(const char* operation, const char* text)
{
    if (text != nullptr) {
        return text;
    }
    Diagnose(operation, text, "is no text");
    return "";
}

/// Whether a JSON number that does not fit a double lies beyond its range, rather than too near to zero:
/// the decimal exponent of its first significant digit tells.
bool IsTooLarge(std::string_view number)
{
    const std::size_t mark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, mark);
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) {
        return false;
    }
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    long long exponent = 0;
    if (mark != std::string_view::npos) {
        const std::size_t sign = number[mark + 1] == '+' ? 1 : 0;
        const char* begin = number.data() + mark + 1 + sign;
        if (std::from_chars(begin, number.data() + number.size(), exponent).ec != std::errc{}) {
            return *begin != '-';
        }
    }
    return exponent > static_cast<long long>(first) - static_cast<long long>(point);
}

/// Takes the events of the JSON reader on their way into the document: refuses a plain value as root and
/// nesting beyond the limit (both the reader and the writer recurse), and converts numbers itself, since
/// the reader's own conversion goes out of bounds for some exponents and lets infinities through.
class DocumentBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, DocumentBuilder>
{
public:
    explicit DocumentBuilder(rapidjson::Document& document) : document_(document) {}

    bool Null() { return Place() && document_.Null(); }
    bool Bool(bool value) { return Place() && document_.Bool(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        return Place() && Number({text, length});
    }
    bool String(const char* text, rapidjson::SizeType length, bool copy)
    {
        return Place() && document_.String(text, length, copy);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy)
    {
        return document_.Key(text, length, copy);
    }
    bool StartObject() { return Enter() && document_.StartObject(); }
    bool EndObject(rapidjson::SizeType count)
    {
        --depth_;
        return document_.EndObject(count);
    }
    bool StartArray() { return Enter() && document_.StartArray(); }
    bool EndArray(rapidjson::SizeType count)
    {
        --depth_;
        return document_.EndArray(count);
    }

private:
    bool Enter() { return ++values_ <= kMaxValues && ++depth_ <= BASUserDefaults::kMaxNesting; }
    bool Place() { return ++values_ <= kMaxValues && depth_ > 0; }

    template <class Integer> static std::optional<Integer> ReadInteger(std::string_view text)
    {
        Integer value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool whole = error == std::errc{} && end == text.data() + text.size();
        return whole ? std::optional(value) : std::nullopt;
    }

    bool Number(std::string_view text)
    {
        if (const auto value = ReadInteger<std::int64_t>(text)) {
            return document_.Int64(*value);
        }
        if (const auto value = ReadInteger<std::uint64_t>(text)) {
            return document_.Uint64(*value);
        }
        double value = 0.0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc::result_out_of_range) {
            if (IsTooLarge(text)) {
                return false;
            }
            value = text.front() == '-' ? -0.0 : 0.0;
        }
        return document_.Double(value);
    }

    /// A value takes at least a line end, an indentation and a character when it is written. The limit
    /// bounds the memory that a file takes, before its written size is known.
    static constexpr std::size_t kMaxValues = BASUserDefaults::kMaxFileSize / 6;

    rapidjson::Document& document_;
    int depth_ = 0;
    std::size_t values_ = 0;
};

/// Writes doubles as printf's "%g" does in the "C" locale.
template <class Stream> class SettingsWriter : public rapidjson::PrettyWriter<Stream>
{
public:
    using rapidjson::PrettyWriter<Stream>::PrettyWriter;

    bool Double(double value)
    {
        constexpr int kSignificantDigits = 6;
        std::array<char, 32> text{};
        const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                                std::chars_format::general, kSignificantDigits);
        return error == std::errc{} &&
               this->RawValue(text.data(), static_cast<std::size_t>(end - text.data()),
                              rapidjson::kNumberType);
    }
};

/// A stream that only counts what is written to it.
struct CountingStream {
    using Ch = char;
    void Put(char /*character*/) { ++count; }
    void Flush() {}

    std::size_t count = 0;
};

/// Counts an indentation at once: those of a deeply nested file are a thousand times longer than the file.
void PutN(CountingStream& stream, char /*character*/, std::size_t times)
{
    stream.count += times;
}

std::size_t WrittenSize(const rapidjson::Document& document)
{
    CountingStream stream;
    SettingsWriter<CountingStream> writer(stream);
    document.Accept(writer);
    return stream.count;
}

/// The whole file and a NUL after it, or null if it cannot be read (a folder, for instance). Of a file
/// beyond the limit only so much is read that its size shows.
std::unique_ptr<char[]> ReadWholeFile(const char* path, std::size_t& size)
{
    const File file(std::fopen(path, "rb"));
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0) {
        return nullptr;
    }
    const long end = std::ftell(file.get());
    if (end < 0 || std::fseek(file.get(), 0, SEEK_SET) != 0) {
        return nullptr;
    }
    // One byte more than there is: reading nothing would succeed on a folder, too.
    const std::size_t wanted = std::min(static_cast<std::size_t>(end), BASUserDefaults::kMaxFileSize) + 1;
    auto buffer = std::make_unique<char[]>(wanted + 1);
    size = std::fread(buffer.get(), 1, wanted, file.get());
    return std::ferror(file.get()) == 0 ? std::move(buffer) : nullptr;
}

/// A number as atoi reads it, but with the nearest limit in place of an overflow.
std::int32_t ReadComponent(const char* text)
{
    const long value = std::strtol(text, nullptr, 10);
    constexpr long kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr long kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, kLeast, kMost));
}

} // namespace

BASUserDefaults::BASUserDefaults(const char* name, const char* path, std::int32_t* result)
    : name_(CheckedText("BASUserDefaults", name)), path_(CheckedText("BASUserDefaults", path)),
      doc_(std::make_unique<rapidjson::Document>())
{
    doc_->SetObject();
    ok_ = ReadAll();
    if (result != nullptr) {
        *result = ok_ ? 1 : 0;
    }
}

BASUserDefaults::~BASUserDefaults() = default;

bool BASUserDefaults::InitUserDefaults(const char* name, const char* path)
{
    std::int32_t loaded = 0;
    auto store = std::make_unique<BASUserDefaults>(name, path, &loaded);
    const std::string& key = store->name_;
    gNameToDefault[key] = store.release();
    return loaded != 0;
}

BASUserDefaults* BASUserDefaults::GetUserDefaults(const char* name)
{
    const auto entry = gNameToDefault.find(CheckedText("GetUserDefaults", name));
    return entry == gNameToDefault.end() ? nullptr : entry->second;
}

bool BASUserDefaults::IsOk() const
{
    return ok_;
}

bool BASUserDefaults::ReadAll()
{
    std::size_t size = 0;
    const std::unique_ptr<char[]> text = ReadWholeFile(path_.c_str(), size);
    if (!text) {
        return false;
    }

    bool parsed = false;
    auto parse = [&](rapidjson::Document& document) {
        DocumentBuilder builder(document);
        rapidjson::Reader reader;
        rapidjson::StringStream stream(text.get());
        parsed = size <= kMaxFileSize &&
                 !reader.Parse<rapidjson::kParseNumbersAsStringsFlag>(stream, builder).IsError();
        return parsed;
    };
    doc_->Populate(parse);
    parsed = parsed && WrittenSize(*doc_) <= kMaxFileSize; // so that a save can be loaded again

    if (!parsed) {
        std::puts("parse error");
        std::fflush(stdout);
        doc_->SetObject();
        return false;
    }
    if (!doc_->IsObject()) {
        Diagnose("ReadAll", path_.c_str(), "holds an array, not an object with settings");
        doc_->SetObject();
        return false;
    }
    return true;
}

void BASUserDefaults::WriteAll() const
{
    const File file(std::fopen(path_.c_str(), "wb"));
    if (!file) {
        return;
    }
    rapidjson::StringBuffer buffer;
    SettingsWriter<rapidjson::StringBuffer> writer(buffer);
    doc_->Accept(writer);
    if (buffer.GetSize() > kMaxFileSize) {
        Diagnose("WriteAll", path_.c_str(), "becomes too large to be loaded again");
    }
    std::fwrite(buffer.GetString(), 1, buffer.GetSize(), file.get());
}

rapidjson::Value* BASUserDefaults::Find(const char* key) const
{
    if (key == nullptr) {
        return nullptr;
    }
    // Through the constant iterators: the others compare ambiguously in C++20.
    const rapidjson::Document& document = *doc_;
    const auto member = document.FindMember(key);
    return member == document.MemberEnd() ? nullptr : const_cast<rapidjson::Value*>(&member->value);
}

void BASUserDefaults::Set(const char* key, rapidjson::Value& value)
{
    if (rapidjson::Value* existing = Find(key)) {
        *existing = value;
        return;
    }
    rapidjson::Value name(key, doc_->GetAllocator());
    doc_->AddMember(name, value, doc_->GetAllocator());
}

bool BASUserDefaults::HasMember(const char* key) const
{
    return Find(key) != nullptr;
}

std::int32_t BASUserDefaults::GetInt(const char* key) const
{
    const rapidjson::Value* value = Find(key);
    if (value == nullptr || !value->IsInt()) {
        Diagnose("GetInt", key, "is not an integer setting");
        return 0;
    }
    return value->GetInt();
}

void BASUserDefaults::SetInt(const char* key, std::int32_t value)
{
    if (key == nullptr) {
        Diagnose("SetInt", key, "is no key");
        return;
    }
    rapidjson::Value number(value);
    Set(key, number);
}

const char* BASUserDefaults::GetString(const char* key) const
{
    const rapidjson::Value* value = Find(key);
    if (value == nullptr || !value->IsString()) {
        Diagnose("GetString", key, kNoText);
        return "";
    }
    return value->GetString();
}

void BASUserDefaults::SetString(const char* key, const char* value)
{
    if (key == nullptr || value == nullptr) {
        Diagnose("SetString", key, key == nullptr ? "is no key" : "is set to no text");
        return;
    }
    // Copied before the old value gives way: `value` may point into it.
    rapidjson::Value text(value, doc_->GetAllocator());
    Set(key, text);
}

BASRGB BASUserDefaults::GetRGB(const char* key) const
{
    const rapidjson::Value* value = Find(key);
    if (value == nullptr || !value->IsString()) {
        if (value != nullptr) {
            Diagnose("GetRGB", key, kNoText);
        }
        return {};
    }
    BASRGB colour;
    const char* text = value->GetString();
    colour.red = ReadComponent(text);
    for (std::int32_t* component : {&colour.green, &colour.blue}) {
        text = std::strchr(text, ',');
        if (text == nullptr) {
            Diagnose("GetRGB", key, "has fewer than three components");
            break;
        }
        ++text;
        *component = ReadComponent(text);
    }
    return colour;
}

const rapidjson::Value& BASUserDefaults::GetValueObject(const char* key) const
{
    static const rapidjson::Value null;
    const rapidjson::Value* value = Find(key);
    return value == nullptr ? null : *value;
}
