#include "platform/appkit/NSApplication.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
