#include "window/ZuToolButton.h"

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"
#include "platform/graphics/NSRecordingGraphicsContext.h"

#include <benchmark/benchmark.h>

namespace
{

Ref<ZuToolButton> sample()
{
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 280.0, 84.0));
    button->setImage(make<NSImage>()->initWithSize({32.0, 32.0}));
    button->setTitle(NSString::stringWithUTF8String("Contacts"));
    button->setToolTip(NSString::stringWithUTF8String("People with their numbers and addresses, to check."));
    return button;
}

void recordToolButton(benchmark::State& state)
{
    const Ref<ZuToolButton> button = sample();
    for ([[maybe_unused]] auto _ : state) {
        const auto context = make<NSRecordingGraphicsContext>(true);
        const NSGraphicsContext::Scope scope(*context);
        button->drawRect(button->bounds());
    }
}
BENCHMARK(recordToolButton);

void paintToolButton(benchmark::State& state)
{
    const Ref<ZuToolButton> button = sample();
    const auto scale = static_cast<double>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(button->imageOfBounds(scale));
    }
}
BENCHMARK(paintToolButton)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void readColourProperty(benchmark::State& state)
{
    static const Ref<ZuToolButton> button = make<ZuToolButton>();
    button->setColor_border(NSColor::whiteColor());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(button->color_border());
    }
}
BENCHMARK(readColourProperty)->ThreadRange(1, 2);

} // namespace
