#include "util/ImageUtil.h"

#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/graphics/NSImage.h"

#include <benchmark/benchmark.h>

namespace
{

/// An image of the given size in pixels, painted in stripes.
Ref<NSImage> sample(int width, int height)
{
    Ref<NSImage> image =
        make<NSImage>()->initWithSize({static_cast<double>(width), static_cast<double>(height)});
    image->lockFocus();
    NSGraphicsContext& context = *NSGraphicsContext::currentContext();
    for (int x = 0; x < width; x += 2) {
        context.setFillColor(
            *NSColor::colorWithSRGBRed_green_blue_alpha(static_cast<double>(x) / width, 0.5, 1.0, 0.8));
        context.fillRect(NSMakeRect(x, 0.0, 1.0, height));
    }
    image->unlockFocus();
    return image;
}

void resizeImage(benchmark::State& state)
{
    const auto extent = [&](std::size_t index) { return static_cast<int>(state.range(index)); };
    const Ref<NSImage> image = sample(extent(0), extent(1));
    const CGSize size{static_cast<double>(extent(2)), static_cast<double>(extent(3))};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ImageUtil::resizeImage_size(image.get(), size));
    }
}
BENCHMARK(resizeImage)
    ->Args({4000, 3000, 200, 150})
    ->Args({512, 512, 32, 32})
    ->Args({64, 64, 32, 32})
    ->Args({32, 32, 32, 32})
    ->Unit(benchmark::kMicrosecond);

void convertToGray(benchmark::State& state)
{
    const Ref<NSImage> image = sample(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ImageUtil::convertToGray(image.get()));
    }
}
BENCHMARK(convertToGray)->Args({64, 64})->Args({2000, 1500})->Unit(benchmark::kMicrosecond);

} // namespace
