// Drawing calls in any order, with any numbers, on every kind of surface and on what suits them.

#include "../calls.h"

namespace melkar::fuzz {
namespace {

void DrawCalls(std::string_view input) {
    Desk desk{Bytes(input)};
    Run(desk, AllCalls());
}

/// Each call on each surface, and on what suits that.
void SeedDrawing(Seeds& seeds) {
    const char choose = static_cast<char>(DrawingCalls().size()); // what follows in the table
    const char chooseFormer = choose + 1, chooseCompatible = choose + 2, selectBitmap = choose + 3, copy = choose + 4;
    for (char surface = 0; surface < static_cast<char>(sizeof Surfaces::kKinds - 1); ++surface) {
        const std::string chosen{choose, surface};
        seeds.add("calls-on-" + std::to_string(surface), chosen + EachOf(AllCalls()));
        const std::string compatible{chooseCompatible, selectBitmap, 80, 120};
        const std::string copied{chooseFormer, 1, copy, 20, 20, 120, 120, 20, 20, 120, 120, 0, 2, 0};
        seeds.add("calls-copied-to-" + std::to_string(surface), chosen + compatible + EachOf(DrawingCalls()) + copied);
    }
    seeds.words = {"a b\nc", "\xE3\x81\x82", "\xD7\xA9", "\x82\xA0"};
}

} // namespace

extern const Target kDrawing;
const Target kDrawing{"drawing", "bytes: numbers of drawing calls and their arguments", DrawCalls, SeedDrawing};

} // namespace melkar::fuzz
