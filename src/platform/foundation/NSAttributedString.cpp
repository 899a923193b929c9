#include "platform/foundation/NSAttributedString.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"

#include <algorithm>

bool NSAttributes::operator==(const NSAttributes& other) const
{
    return std::ranges::equal(_values, other._values, [](const auto& a, const auto& b) {
        return a == b || (a && a->isEqual(b.get()));
    });
}

NSAttributedString::NSAttributedString() : _string(NSString::stringWithCharacters({})), _runs{Run{}} {}

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
    _runs = {Run{{0, length()}, attributes}};
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
    if (length() == 0) {
        _runs.front().attributes.set(attribute);
    } else if (inside.length == 0) {
        return;
    } else {
        divideRunsAt(NSMaxRange(inside));
        const auto first = divideRunsAt(inside.location);
        auto last = first;
        for (; last != _runs.end() && last->range.location < NSMaxRange(inside); ++last) {
            last->attributes.set(attribute);
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
    _string = other == nullptr ? NSString::stringWithCharacters({}) : other->string();
    _runs = other == nullptr ? std::vector{Run{}} : other->runs();
    ++_changeCount;
}

Ref<NSAttributedString> NSMutableAttributedString::copy() const
{
    return make<NSAttributedString>()->initWithAttributedString(this);
}
