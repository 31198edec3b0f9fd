// Drawing calls in any order, with any numbers, on every kind of surface and on what suits them.

#include "../calls.h"

namespace melkar::fuzz {
namespace {

void DrawCalls(std::string_view input) {
    Desk desk;
    Run(desk, AllCalls(), input);
}

/// Each call on each surface, and on what suits that, copied there in every way.
void SeedDrawing(Seeds& seeds) {
    const std::size_t choose = DrawingCalls().size(); // what stands behind them
    const std::size_t former = choose + 1, compatible = choose + 2, bitmap = choose + 3, copy = choose + 4;
    for (char surface = 0; surface < static_cast<char>(sizeof Surfaces::kKinds - 1); ++surface) {
        const std::string chosen = Block(choose, {surface});
        seeds.add("calls-on-" + std::to_string(surface), chosen + EachOf(AllCalls()));
        std::string copied = Block(compatible, "") + Block(bitmap, "xx") + EachOf(DrawingCalls()) + Block(former, "\1");
        for (char operation = 0; operation < 4; ++operation)
            for (char stretched = 0; stretched < 2; ++stretched)
                copied += Block(copy, {20, 20, 120, 120, 20, 20, 110, 110, operation, 2, stretched});
        seeds.add("calls-copied-to-" + std::to_string(surface), chosen + copied);
    }
    seeds.words = {"a b\nc", "\xE3\x81\x82", "\xD7\xA9", "\x82\xA0"};
}

} // namespace

extern const Target kDrawing;
const Target kDrawing{"drawing", "bytes: numbers of drawing calls and their arguments", DrawCalls, SeedDrawing};

} // namespace melkar::fuzz
