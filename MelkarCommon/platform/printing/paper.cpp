#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/printing/paper.h>

#include <algorithm>
#include <utility>

namespace melkar {
namespace {

constexpr Paper kPapers[] = {
    {DMPAPER_LETTER, "na_letter_8.5x11in", 21590, 27940},
    {DMPAPER_TABLOID, "na_ledger_11x17in", 27940, 43180},
    {DMPAPER_LEGAL, "na_legal_8.5x14in", 21590, 35560},
    {DMPAPER_STATEMENT, "na_invoice_5.5x8.5in", 13970, 21590},
    {DMPAPER_EXECUTIVE, "na_executive_7.25x10.5in", 18415, 26670},
    {DMPAPER_A3, "iso_a3_297x420mm", 29700, 42000},
    {DMPAPER_A4, "iso_a4_210x297mm", 21000, 29700},
    {DMPAPER_A5, "iso_a5_148x210mm", 14800, 21000},
    {DMPAPER_B4, "jis_b4_257x364mm", 25700, 36400},
    {DMPAPER_B5, "jis_b5_182x257mm", 18200, 25700},
    {DMPAPER_JAPANESE_POSTCARD, "jpn_hagaki_100x148mm", 10000, 14800},
    {DMPAPER_A2, "iso_a2_420x594mm", 42000, 59400},
    {DMPAPER_A6, "iso_a6_105x148mm", 10500, 14800},
};

template <class Matches> const Paper* FindIf(Matches matches) {
    const auto* found = std::find_if(std::begin(kPapers), std::end(kPapers), matches);
    return found != std::end(kPapers) ? found : nullptr;
}

/// Whole units between two edges: none reaches into a margin.
int RoomBetween(int from, int to) {
    return std::max(1, static_cast<int>((to - from) / (kHundredthsPerInch / kUnitsPerInch)));
}

} // namespace

const Paper* FindPaper(short code) {
    return FindIf([code](const Paper& paper) { return paper.code == code; });
}

const Paper* FindPaper(std::string_view media) {
    return FindIf([media](const Paper& paper) { return paper.media == media; });
}

SheetLayout LayOutSheet(const Paper& paper, const Margins& margins, bool isLandscape) {
    int width = paper.width;
    int height = paper.height;
    Margins edges = margins;
    if (isLandscape) {
        std::swap(width, height);
        edges = {margins.bottom, margins.left, margins.top, margins.right};
    }
    return {width * kPointsPerHundredth,
            height * kPointsPerHundredth,
            edges.left * kPointsPerHundredth,
            edges.top * kPointsPerHundredth,
            RoomBetween(edges.left, width - edges.right),
            RoomBetween(edges.top, height - edges.bottom)};
}

} // namespace melkar
