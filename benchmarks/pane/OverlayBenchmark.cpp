#include "FrostedBackdrop.h"
#include "OverlayLayout.h"
#include "OverlayPainter.h"
#include "OverlayTypesetter.h"

#include <QGuiApplication>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <vector>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr QRectF pane(0, 0, 900, 1000);
constexpr int blockCount = 40;

struct Block
{
    QString text;
    QRectF rect;
    double bottomLimit;
};

/// A full page in two columns: some translations fit, some need a smaller size, some several lines, some are cut off.
std::vector<Block> page()
{
    const QStringList texts{
        u"設定"_s,
        u"在螢幕上任何一段文字的上方拖曳玻璃板，譯文就會直接顯示在原文的位置。"_s,
        u"Drag the pane over any text on the screen; the translation appears right where the source is."_s,
        u"若清單尚未出現，請按左下角的「＋」加入，接著重新啟動應用程式 Settings > Privacy。"_s,
        u"画面上の文字にガラス板を重ねると、訳文が元の位置に表示されます。"_s,
        u"畫面 👍 完成"_s,
        u"A short line"_s,
        u"這一行非常長，需要縮小字級並且分成許多行才放得下，而且下方的空間其實並不夠，所以最後一行會以省略號結尾。"_s,
    };
    std::vector<Block> blocks;
    for (int i = 0; i < blockCount; ++i) {
        const double height = 14 + i % 5 * 9;
        const QRectF rect(20 + i % 2 * 450, 10 + i / 2 * 48, 60 + i % 7 * 45, height);
        // Each text appears once only, as on a real page: nothing is shaped beforehand.
        blocks.push_back({texts[i % texts.size()] + QString::number(i), rect, rect.bottom() + i % 4 * 20});
    }
    return blocks;
}

void layOutAPage(benchmark::State &state)
{
    const std::vector<Block> blocks = page();
    for (auto each : state) {
        OverlayTypesetter typesetter(u"zh-Hant"_s);
        for (const Block &block : blocks) {
            auto layout = layOutOverlay(typesetter, block.text, {block.bottomLimit}, block.rect, pane, {});
            benchmark::DoNotOptimize(layout);
        }
    }
}
BENCHMARK(layOutAPage)->Unit(benchmark::kMillisecond);

void layOutEndlessTexts(benchmark::State &state)
{
    const QString text = u"This text has no end. "_s.repeated(100000);
    for (auto each : state) {
        OverlayTypesetter typesetter(u"en"_s);
        auto layout = layOutOverlay(typesetter, text, {900}, QRectF(10, 10, 300, 60), pane, {});
        benchmark::DoNotOptimize(layout);
    }
}
BENCHMARK(layOutEndlessTexts)->Unit(benchmark::kMillisecond);

/// Argument: pixels per point. Each overlay's picture is made and drawn once.
void paintAPage(benchmark::State &state)
{
    const double scale = double(state.range(0));
    QImage image((pane.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    OverlayTypesetter typesetter(u"zh-Hant"_s);
    std::vector<OverlayPainter> unused;
    for (const Block &block : page()) {
        if (auto layout = layOutOverlay(typesetter, block.text, {block.bottomLimit}, block.rect, pane, {}))
            unused.emplace_back(typesetter.typeset(block.text), *layout);
    }
    for (auto each : state) {
        QPainter painter(&image);
        painter.scale(scale, scale);
        for (OverlayPainter overlay : unused)
            overlay.paint(painter);
    }
}
BENCHMARK(paintAPage)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void repaintAPage(benchmark::State &state)
{
    QImage image(pane.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    OverlayTypesetter typesetter(u"zh-Hant"_s);
    std::vector<OverlayPainter> overlays;
    for (const Block &block : page()) {
        if (auto layout = layOutOverlay(typesetter, block.text, {block.bottomLimit}, block.rect, pane, {}))
            overlays.emplace_back(typesetter.typeset(block.text), *layout);
    }
    for (auto each : state) {
        QPainter painter(&image);
        for (OverlayPainter &overlay : overlays)
            overlay.paint(painter);
    }
}
BENCHMARK(repaintAPage)->Unit(benchmark::kMillisecond);

void makeGlass(benchmark::State &state)
{
    QImage content(int(state.range(0)), int(state.range(1)), QImage::Format_RGB32);
    content.fill(Qt::white);
    for (auto each : state) {
        FrostedBackdrop glass(content);
        benchmark::DoNotOptimize(glass);
    }
}
BENCHMARK(makeGlass)->Args({480, 280})->Args({1920, 1080})->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
