// The plain controls: what it takes to paint them, next to each other.

#include "platform/appkit/NSEvent.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"
#include "window/ZuBorderView.h"
#include "window/ZuBox.h"
#include "window/ZuLine.h"
#include "window/ZuOutlineItem.h"
#include "window/ZuProgressView.h"
#include "window/ZuSimpleButton.h"

#include <benchmark/benchmark.h>

namespace
{

void paint(benchmark::State& state, NSView& view)
{
    const auto scale = static_cast<double>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(view.imageOfBounds(scale));
    }
}

void paintSimpleButton(benchmark::State& state)
{
    const Ref<ZuSimpleButton> button =
        make<ZuSimpleButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 32.0));
    button->awakeFromNib();
    button->setTitle(NSString::stringWithUTF8String("Import"));
    button->setImage(make<NSImage>()->initWithSize({16.0, 16.0}));
    paint(state, *button);
}
BENCHMARK(paintSimpleButton)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void paintProgressView(benchmark::State& state)
{
    const Ref<ZuProgressView> view = make<ZuProgressView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 10.0));
    view->setColor_border_(NSColor::grayColor());
    view->setColor_unuse_(NSColor::whiteColor());
    view->setColor_used_(NSColor::blackColor());
    view->setXRadius_(5.0);
    view->setYRadius_(5.0);
    view->setTotal_(100.0);
    view->setStep_(25.0);
    paint(state, *view);
}
BENCHMARK(paintProgressView)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void paintDashedLine(benchmark::State& state)
{
    const Ref<ZuLine> line = make<ZuLine>()->initWithFrame(NSMakeRect(0.0, 0.0, 600.0, 2.0));
    line->awakeFromNib();
    line->setStyle_(ZuLine::kDashed);
    paint(state, *line);
}
BENCHMARK(paintDashedLine)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void paintBox(benchmark::State& state)
{
    const Ref<ZuBox> box = make<ZuBox>()->initWithFrame(NSMakeRect(0.0, 0.0, 400.0, 120.0));
    box->awakeFromNib();
    box->setTitle(NSString::stringWithUTF8String("Photos"));
    paint(state, *box);
}
BENCHMARK(paintBox)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void paintShadow(benchmark::State& state)
{
    const Ref<NSView> behind = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 440.0, 160.0));
    const Ref<ZuBorderView> view = make<ZuBorderView>()->initWithFrame(NSMakeRect(20.0, 20.0, 400.0, 120.0));
    view->setShadow();
    behind->addSubview(view);
    paint(state, *behind);
}
BENCHMARK(paintShadow)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

/// An entry and an exit colour the title each.
void enterAndLeaveSimpleButton(benchmark::State& state)
{
    const Ref<ZuSimpleButton> button =
        make<ZuSimpleButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 32.0));
    button->awakeFromNib();
    button->setTitle(NSString::stringWithUTF8String("Import"));
    const Ref<NSEvent> event =
        NSEvent::mouseEventWithType_location_window(NSEventType::MouseEntered, {}, nullptr);
    for ([[maybe_unused]] auto _ : state) {
        button->mouseEntered(event.get());
        button->mouseExited(event.get());
    }
}
BENCHMARK(enterAndLeaveSimpleButton);

/// A million items, a thousand below each of a thousand.
void buildAndDestroyTree(benchmark::State& state)
{
    constexpr int kChildren = 1000;
    for ([[maybe_unused]] auto _ : state) {
        const Ref<ZuOutlineItem> root = make<ZuOutlineItem>()->init();
        for (int i = 0; i < kChildren; ++i) {
            const Ref<ZuOutlineItem> group = make<ZuOutlineItem>()->init();
            root->addChild(group);
            for (int j = 0; j < kChildren; ++j) {
                group->addChild(make<ZuOutlineItem>()->init());
            }
        }
    }
}
BENCHMARK(buildAndDestroyTree)->Unit(benchmark::kMillisecond);

} // namespace
