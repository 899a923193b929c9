#include "util/UiUtil.h"

#include "platform/appkit/NSView.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "platform/graphics/NSParagraphStyle.h"

#include <benchmark/benchmark.h>

#include <string>

namespace
{

constexpr float kWidth = 200.0F;

Ref<NSString> sentence(std::int64_t number)
{
    return NSString::stringWithUTF8String(
        (std::to_string(number) +
         " people with their numbers and addresses, to check, to sort and to export.")
            .c_str());
}

Ref<NSFont> font()
{
    return NSFont::fontWithName_size("Arial", 12.0);
}

void measureKnownText(benchmark::State& state)
{
    const Ref<NSString> text = sentence(0);
    const Ref<NSFont> arial = font();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(
            UiUtil::heightForStringDrawing_withFont_withWidth(text.get(), arial.get(), kWidth));
    }
}
BENCHMARK(measureKnownText);

void measureNewText(benchmark::State& state)
{
    const Ref<NSFont> arial = font();
    std::int64_t number = 0;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(
            UiUtil::heightForStringDrawing_withFont_withWidth(sentence(++number).get(), arial.get(), kWidth));
    }
}
BENCHMARK(measureNewText)->Unit(benchmark::kMicrosecond);

void measureNewName(benchmark::State& state)
{
    const NSAttributes attributes{{NSFontAttributeName, font()}};
    std::u16string characters = u"Contact 10000000";
    for ([[maybe_unused]] auto _ : state) {
        for (auto digit = characters.rbegin(); ++*digit > u'9'; ++digit) {
            *digit = u'0';
        }
        const Ref<NSString> string = NSString::stringWithCharacters(characters);
        const Ref<NSAttributedString> name =
            make<NSAttributedString>()->initWithString_attributes(string.get(), attributes);
        benchmark::DoNotOptimize(name->size());
    }
}
BENCHMARK(measureNewName);

/// Draws a text as often as the benchmark is told to.
class Page final : public NSView
{
public:
    explicit Page(std::int64_t draws) : _draws(draws) {}

    void drawRect(NSRect rect) override
    {
        for (std::int64_t draw = 0; draw < _draws; ++draw) {
            UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(
                _text.get(), _font.get(), rect, NSColor::blackColor().get(), NSTextAlignment::Left);
        }
    }

private:
    std::int64_t _draws;
    Ref<NSString> _text = sentence(0);
    Ref<NSFont> _font = font();
};

/// The cost of a draw is the difference of the two by a hundred: the rest is the picture.
void drawKnownText(benchmark::State& state)
{
    const Ref<Page> page = make<Page>(state.range(0));
    page->initWithFrame(NSMakeRect(0.0, 0.0, kWidth, 100.0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(page->imageOfBounds(1.0));
    }
}
BENCHMARK(drawKnownText)->Arg(0)->Arg(100)->Unit(benchmark::kMicrosecond);

} // namespace
