// What is drawn on a surface that suits a record, and copied there, reads like what is drawn there at once.

#include "../calls.h"

#include <MelkarCommon/platform/surface.h>

#include <sstream>

namespace melkar::fuzz {
namespace {

constexpr int kInside = 200; // numbers below it stay on the surface

/// Without the lines that tell of a copy, and of what is cut: the copy cuts at the edges of the surface.
std::string Plain(const std::string& record) {
    std::istringstream lines(record);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("copy "))
            text += line.substr(0, line.rfind(" clip ")) + "\n";
    return text;
}

std::string RecordOf(std::string_view input, bool isCopied) {
    Desk desk;
    const HDC record = desk.Of('r');
    desk.Choose('r');
    const HBITMAP bitmap = CreateCompatibleBitmap(record, kSide, kSide);
    desk.Keep(bitmap); // in both cases: a desk keeps so many objects, and what it doesn't keep isn't selected
    if (isCopied) {
        desk.ChooseCompatible();
        SelectObject(desk.Top(), bitmap);
    }
    Run(desk, DrawingCalls(), input, kInside);
    if (isCopied)
        BitBlt(record, 0, 0, kSide, kSide, desk.Top(), 0, 0, SRCCOPY);
    return Plain(GetRecording(record));
}

void CompareRecords(std::string_view input) {
    Require(RecordOf(input, false) == RecordOf(input, true), "a copy reads like what was drawn");
}

void SeedRecordings(Seeds& seeds) {
    seeds.words = {"a b\nc", "\xE3\x81\x82", "\xD7\xA9"};
    const std::string all = EachOf(DrawingCalls());
    for (std::size_t start = 0; start < all.size(); start += kBlock)
        seeds.add("calls-from-" + std::to_string(start), all.substr(start) + all.substr(0, start));
}

} // namespace

extern const Target kRecordings;
const Target kRecordings{"recordings", "bytes: drawing calls as of `drawing`", CompareRecords, SeedRecordings};

} // namespace melkar::fuzz
