#pragma once

// What tables and the toolkit's own item views are measured with: painting over and over, the same places in
// each run.

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"

#include <benchmark/benchmark.h>

#include <QAbstractScrollArea>
#include <QImage>
#include <QScrollBar>
#include <QTemporaryDir>

#include <cstdint>

inline QImage picture(QRgb color, int side)
{
    QImage pixels(side, side, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(color);
    return pixels;
}

/// As an application gets it: from a file.
inline Ref<NSImage> image(QRgb color, int side)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("picture.png");
    picture(color, side).save(file);
    return make<NSImage>()->initWithContentsOfFile(
        NSString::stringWithUTF8String(file.toUtf8().constData()).get());
}

/// Leaves the rows where they are.
struct Still {
    int operator()(const QScrollBar& bar) const { return bar.value(); }
};

/// A step further each time, and from the end back to the beginning.
struct Onward {
    int operator()(const QScrollBar& bar) const
    {
        return bar.value() + step <= bar.maximum() ? bar.value() + step : 0;
    }

    int step; // in points
};

/// The same places in each run.
struct Random {
    int operator()(const QScrollBar& bar)
    {
        state = state * 1664525 + 1013904223;
        return static_cast<int>((std::uint64_t{state} * static_cast<std::uint64_t>(bar.maximum())) >> 32U);
    }

    std::uint32_t state = 1;
};

/// Paints the so many rows that show over and over, scrolled each time where `next` says.
template <class Next>
void paint(benchmark::State& state, const QAbstractScrollArea& area, int rows, Next next)
{
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    QScrollBar& bar = *area.verticalScrollBar();
    const auto frame = [&] {
        bar.setValue(next(bar));
        area.viewport()->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        benchmark::DoNotOptimize(image.constBits());
    };
    frame(); // the first lays out
    for ([[maybe_unused]] auto _ : state) {
        frame();
    }
    state.SetItemsProcessed(state.iterations() * rows);
}
