#include "platform/foundation/NSAttributedString.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"

#include <algorithm>

namespace
{

/// One for all: most texts get another one at once.
const Ref<NSString>& emptyString()
{
    static const Ref<NSString> string = NSString::stringWithCharacters({});
    return string;
}

} // namespace

bool NSAttributes::operator==(const NSAttributes& other) const
{
    return std::ranges::equal(_values, other._values, [](const auto& a, const auto& b) {
        return a == b || (a && a->isEqual(b.get()));
    });
}

NSAttributedString::NSAttributedString() : _string(emptyString()), _runs(1) {}

NSAttributedString::~NSAttributedString() = default;

NSAttributedString* NSAttributedString::initWithString(NSString* string)
{
    return initWithString_attributes(string, {});
}

NSAttributedString* NSAttributedString::initWithString_attributes(NSString* string,
                                                                  const NSAttributes& attributes)
{
    if (string != nullptr) {
        _string = string;
    }
    _runs.resize(1);
    _runs.front() = {{0, length()}, attributes};
    return this;
}

NSAttributedString* NSAttributedString::initWithAttributedString(const NSAttributedString* other)
{
    if (other != nullptr) {
        _string = other->_string;
        _runs = other->_runs;
    }
    return this;
}

Ref<NSString> NSAttributedString::string() const
{
    return _string;
}

std::size_t NSAttributedString::length() const
{
    return _string->length();
}

const NSAttributes& NSAttributedString::attributesAtIndex_effectiveRange(std::size_t index,
                                                                         NSRange* effectiveRange) const
{
    static const Run nowhere{{NSNotFound, 0}, {}};
    const Run* found = &nowhere;
    if (index < length()) {
        found =
            &*(std::ranges::upper_bound(_runs, index, {}, [](const Run& run) { return run.range.location; }) -
               1);
    } else if (index == length()) {
        found = &_runs.back();
    } else {
        diagnose("attributesAtIndex", "index " + std::to_string(index) + " is beyond the text");
    }
    if (effectiveRange != nullptr) {
        *effectiveRange = found->range;
    }
    return found->attributes;
}

NSObject* NSAttributedString::attributeAt(std::size_t key, std::size_t index, NSRange* effectiveRange,
                                          NSRange limit) const
{
    if (index >= length()) {
        if (effectiveRange != nullptr) {
            *effectiveRange = {NSNotFound, 0};
        }
        return nullptr;
    }
    const auto runAt =
        std::ranges::upper_bound(_runs, index, {}, [](const Run& run) { return run.range.location; }) - 1;
    NSObject* const value = runAt->attributes.valueAt(key);
    const auto isSame = [&](const Run& run) {
        const NSObject* const other = run.attributes.valueAt(key);
        return other == value || (value != nullptr && value->isEqual(other));
    };
    if (effectiveRange != nullptr) {
        auto first = runAt;
        while (first != _runs.begin() && first->range.location > limit.location && isSame(first[-1])) {
            --first;
        }
        auto last = runAt;
        while (last + 1 != _runs.end() && NSMaxRange(last->range) < NSMaxRange(limit) && isSame(last[1])) {
            ++last;
        }
        const std::size_t start = first->range.location;
        *effectiveRange = NSIntersectionRange({start, NSMaxRange(last->range) - start}, limit);
    }
    return value;
}

void NSAttributedString::enumerateAttributesInRange_usingBlock(
    NSRange range,
    const std::function<void(const NSAttributes& attributes, NSRange range, bool& stop)>& block) const
{
    const std::vector<Run> runs = _runs;
    bool stop = false;
    for (const Run& run : runs) {
        const NSRange part = NSIntersectionRange(run.range, range);
        if (part.length > 0) {
            block(run.attributes, part, stop);
        }
        if (stop) {
            return;
        }
    }
}

Ref<NSAttributedString> NSAttributedString::copy() const
{
    return const_cast<NSAttributedString*>(this);
}

bool NSAttributedString::isEqual(const NSObject* other) const
{
    const auto* text = dynamic_cast<const NSAttributedString*>(other);
    const auto equal = [](const Run& a, const Run& b) {
        return a.range == b.range && a.attributes == b.attributes;
    };
    return text != nullptr && _string->isEqual(text->_string.get()) &&
           std::ranges::equal(_runs, text->_runs, equal);
}

NSMutableAttributedString* NSMutableAttributedString::initWithString(NSString* string)
{
    NSAttributedString::initWithString(string);
    return this;
}

NSMutableAttributedString*
NSMutableAttributedString::initWithAttributedString(const NSAttributedString* other)
{
    NSAttributedString::initWithAttributedString(other);
    return this;
}

std::vector<NSAttributedString::Run>::iterator NSMutableAttributedString::divideRunsAt(std::size_t location)
{
    const auto run =
        std::ranges::lower_bound(_runs, location, {}, [](const Run& each) { return NSMaxRange(each.range); });
    if (run == _runs.end() || location <= run->range.location) {
        return run;
    }
    if (location == NSMaxRange(run->range)) {
        return run + 1;
    }
    Run rest = *run;
    run->range.length = location - run->range.location;
    rest.range = {location, rest.range.length - run->range.length};
    return _runs.insert(run + 1, std::move(rest));
}

void NSMutableAttributedString::addAttribute_value_range(const NSAttributes::Entry& attribute, NSRange range)
{
    const NSRange inside = NSIntersectionRange(range, {0, length()});
    if (inside != range) {
        diagnose("addAttribute", "the range goes beyond the text");
    }
    change(inside, [&](NSAttributes& attributes) { attributes.set(attribute); });
}

void NSMutableAttributedString::setAttributes_range(const NSAttributes& attributes, NSRange range)
{
    change(NSIntersectionRange(range, {0, length()}), [&](NSAttributes& old) { old = attributes; });
}

void NSMutableAttributedString::change(NSRange range,
                                       const std::function<void(NSAttributes& attributes)>& change)
{
    if (length() == 0) {
        change(_runs.front().attributes);
    } else if (range.length == 0) {
        return;
    } else {
        divideRunsAt(NSMaxRange(range));
        const auto first = divideRunsAt(range.location);
        auto last = first;
        for (; last != _runs.end() && last->range.location < NSMaxRange(range); ++last) {
            change(last->attributes);
        }
        joinRuns(first == _runs.begin() ? first : first - 1, last == _runs.end() ? last : last + 1);
    }
    ++_changeCount;
}

void NSMutableAttributedString::addMissingAttribute(const NSAttributes::Entry& attribute)
{
    for (Run& run : _runs) {
        run.attributes.setMissing(attribute);
    }
    joinRuns(_runs.begin(), _runs.end());
    ++_changeCount;
}

void NSMutableAttributedString::joinRuns(std::vector<Run>::iterator first, std::vector<Run>::iterator end)
{
    auto kept = first;
    for (auto run = first + 1; run != end; ++run) {
        if (run->attributes == kept->attributes) {
            kept->range.length += run->range.length;
        } else if (++kept != run) {
            *kept = std::move(*run);
        }
    }
    _runs.erase(kept + 1, end);
}

void NSMutableAttributedString::setAttributedString(const NSAttributedString* other)
{
    _string = other == nullptr ? emptyString() : other->string();
    _runs = other == nullptr ? std::vector{Run{}} : other->runs();
    ++_changeCount;
}

Ref<NSAttributedString> NSMutableAttributedString::copy() const
{
    return make<NSAttributedString>()->initWithAttributedString(this);
}
