// A capture with ten windows of another program beneath, on an X server of the benchmark's own.

#include "TestClient.h"
#include "VirtualScreen.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

using namespace lucentra;

namespace {

void compose(benchmark::State &state)
{
    TestClient us;
    TestClient other;
    X11Composer composer(us.range());
    composer.setRedirecting(true);
    for (int i = 0; i < 10; ++i)
        other.addWindow({40 * i, 30 * i, 1400, 760}, 0xff203040 + QRgb(i));
    const QRect area(100, 100, int(state.range(0)), int(state.range(1)));
    composer.compose(area); // the first one waits until the pixmaps are there
    for (auto each : state) {
        const QImage image = composer.compose(area);
        if (image.size() != area.size())
            state.SkipWithError("nothing was captured");
    }
}
BENCHMARK(compose)->Args({480, 280})->Args({1920, 1080})->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const VirtualScreen screen(QStringLiteral("2100x1300x24"));
    if (!screen.use())
        return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
