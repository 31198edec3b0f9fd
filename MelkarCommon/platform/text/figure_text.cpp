#include <MelkarCommon/platform/text/figure_text.h>

#include <MelkarCommon/platform/text/text_face.h>
#include <MelkarCommon/platform/text/text_parts.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

namespace melkar {
namespace {

constexpr std::size_t kMaxLength = 24; // bytes; longer texts are rare enough to be shaped
constexpr double kMaxEm = 48;          // pixels; larger glyphs would take too much memory
constexpr int kShapedFirst = 40;       // figures of a face before ready-made glyphs pay
constexpr int kUnknown = INT_MIN;      // no step
constexpr int kGlyphRow = 16;          // bytes that are added at once: a month takes 5% fewer instructions
constexpr std::uint8_t kNone = 0xFF;

constexpr auto kIndex = [] {
    std::array<std::uint8_t, 256> index{};
    index.fill(kNone);
    for (std::size_t i = 0; i < FigureSet::kCharacters.size(); ++i)
        index[static_cast<unsigned char>(FigureSet::kCharacters[i])] = static_cast<std::uint8_t>(i);
    return index;
}();

/// The only run of a text as it is shaped; null if there isn't exactly one, with one glyph on the baseline for each
/// character.
const GlyphRun* OnlyRun(const TextLayout& layout) {
    if (layout.lines.size() != 1 || layout.lines[0].runs.size() != 1)
        return nullptr;
    const GlyphRun& run = layout.lines[0].runs[0];
    const bool plain =
        !run.backward && run.glyphs.size() == layout.lines[0].utf8.size() &&
        std::all_of(run.glyphs.begin(), run.glyphs.end(), [](const auto& glyph) { return glyph.y == 0; });
    return plain ? &run : nullptr;
}

/// Every character before every other one, itself included.
std::string AllPairs() {
    std::string pairs;
    for (const char a : FigureSet::kCharacters)
        for (const char b : FigureSet::kCharacters)
            pairs += {a, b};
    return pairs;
}

/// The mask of a glyph, its rows `kGlyphRow` bytes apart if it is no wider than that.
CoverageMask InGlyphRows(CoverageMask mask) {
    if (mask.width > kGlyphRow)
        return mask;
    std::vector<std::uint8_t> rows(static_cast<std::size_t>(mask.height) * kGlyphRow);
    for (int row = 0; row < mask.height; ++row)
        std::copy_n(mask.coverage.begin() + std::ptrdiff_t{row} * mask.stride, mask.width,
                    rows.begin() + std::ptrdiff_t{row} * kGlyphRow);
    mask.stride = kGlyphRow;
    mask.coverage = std::move(rows);
    return mask;
}

/// A row into which no other glyph reaches; what is behind the glyph there stays.
void AddGlyphRow(const std::uint8_t* source, std::uint8_t* target) {
    std::array<std::uint64_t, kGlyphRow / sizeof(std::uint64_t)> glyph;
    std::array<std::uint64_t, glyph.size()> row;
    std::memcpy(glyph.data(), source, sizeof glyph);
    std::memcpy(row.data(), target, sizeof row);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] |= glyph[i];
    std::memcpy(target, row.data(), sizeof row);
}

/// Adds a glyph to the mask of a text; only where glyphs reach into each other is there something to add to.
void AddCoverage(const CoverageMask& glyph, int x, int inkedTo, CoverageMask& mask) {
    const bool isAlone = x + glyph.left >= inkedTo;
    const std::uint8_t* source = glyph.coverage.data();
    std::uint8_t* target =
        mask.coverage.data() + std::ptrdiff_t{glyph.top - mask.top} * mask.stride + (x + glyph.left - mask.left);
    for (int row = 0; row < glyph.height; ++row, source += glyph.stride, target += mask.stride) {
        if (isAlone && glyph.stride == kGlyphRow) {
            AddGlyphRow(source, target);
            continue;
        }
        for (int column = 0; column < glyph.width; ++column)
            target[column] = static_cast<std::uint8_t>(std::min(target[column] + source[column], 0xFF));
    }
}

} // namespace

bool IsFigure(std::string_view text) {
    return !text.empty() && text.size() <= kMaxLength &&
           std::all_of(text.begin(), text.end(), [](char c) { return kIndex[static_cast<unsigned char>(c)] != kNone; });
}

const FigureSet::Glyph& FigureSet::Of(char character) const {
    return m_glyphs[kIndex[static_cast<unsigned char>(character)]];
}

bool FigureSet::Covers(std::string_view text) const {
    return std::all_of(text.begin(), text.end(), [this](char c) { return Of(c).isSteady; });
}

/// From the origin of the glyph at `i` to that of the next one, or to the text's end.
int FigureSet::Step(std::string_view text, std::size_t i) const {
    const Glyph& glyph = Of(text[i]);
    return i + 1 < text.size() ? glyph.steps[kIndex[static_cast<unsigned char>(text[i + 1])]] : glyph.width;
}

int FigureSet::Width(std::string_view text) const {
    int width = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        width += Step(text, i);
    return width;
}

void FigureSet::SetLine(TextLine& line, std::string_view text, int width) const {
    line.utf8 = text;
    line.width = width;
    line.kept.isOfFormer = true;
    line.runs.resize(1);
    GlyphRun& run = line.runs[0];
    run.font = m_font;
    run.utf8 = text;
    run.clusters.assign(text.size(), {1, 1});
    run.glyphs.clear();
    int x = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        run.glyphs.push_back({Of(text[i]).index, static_cast<double>(x), 0.0});
        x += Step(text, i);
    }
}

CoverageMask FigureSet::Mask(std::string_view text, std::vector<std::uint8_t> memory) const {
    int left = INT_MAX;
    int top = INT_MAX;
    int right = INT_MIN;
    int bottom = INT_MIN;
    int x = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const CoverageMask& glyph = Of(text[i]).mask;
        if (glyph.width > 0) {
            left = std::min(left, x + glyph.left);
            right = std::max(right, x + glyph.left + glyph.width);
            top = std::min(top, glyph.top);
            bottom = std::max(bottom, glyph.top + glyph.height);
        }
        x += Step(text, i);
    }
    if (left >= right)
        return {};
    CoverageMask mask{0, left, top, right - left, bottom - top, right - left, std::move(memory)};
    const std::size_t bytes = static_cast<std::size_t>(mask.stride) * static_cast<std::size_t>(mask.height);
    mask.coverage.assign(bytes + kGlyphRow, 0); // with room for what a glyph's row has behind the glyph
    x = 0;
    int inkedTo = INT_MIN;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const CoverageMask& glyph = Of(text[i]).mask;
        if (glyph.width > 0) {
            AddCoverage(glyph, x, inkedTo, mask);
            inkedTo = std::max(inkedTo, x + glyph.left + glyph.width);
        }
        x += Step(text, i);
    }
    mask.coverage.resize(bytes);
    return mask;
}

bool FigureSet::Take(TextFace& face) {
    for (std::size_t i = 0; i < kCharacters.size(); ++i) {
        const TextLayout layout = LayOutAnew(face, kCharacters.substr(i, 1), true, kNoWrap);
        const GlyphRun* run = OnlyRun(layout);
        if (run == nullptr || run->glyphs[0].x != 0 || (m_font != nullptr && run->font.get() != m_font.get()))
            return false;
        m_font = run->font;
        m_glyphs[i] = {run->glyphs[0].index, true, layout.width, {}, InGlyphRows(DrawMask(layout, layout.lines[0], 0))};
        m_glyphs[i].steps.fill(kUnknown);
    }
    return true;
}

/// Which characters stay as they are beside others, and how far apart those stand. @return false if a digit doesn't.
bool FigureSet::LearnNeighbours(TextFace& face) {
    const std::string pairs = AllPairs();
    const TextLayout layout = LayOutAnew(face, pairs, true, kNoWrap);
    const GlyphRun* run = OnlyRun(layout);
    if (run == nullptr || run->font.get() != m_font.get())
        return false;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        Glyph& glyph = m_glyphs[kIndex[static_cast<unsigned char>(pairs[i])]];
        glyph.isSteady = glyph.isSteady && run->glyphs[i].index == glyph.index;
    }
    return Covers("0123456789") && LearnSteps(pairs, *run);
}

/// @return false if a step is no whole number, or one between the same two characters depends on a third.
bool FigureSet::LearnSteps(std::string_view text, const GlyphRun& run) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (!Covers(text.substr(i, 2)))
            continue;
        const double step = run.glyphs[i + 1].x - run.glyphs[i].x;
        int& known = m_glyphs[kIndex[static_cast<unsigned char>(text[i])]]
                         .steps[kIndex[static_cast<unsigned char>(text[i + 1])]];
        if (step != std::trunc(step) || (known != kUnknown && known != step))
            return false;
        known = static_cast<int>(step);
    }
    return true;
}

namespace {

bool IsFor(const std::shared_ptr<TextLayout>& layout, std::string_view text) {
    return layout != nullptr && layout->lines[0].utf8 == text;
}

/// False if somebody else has it. If not, what others did with it, maybe on another thread, is over: taking a share of
/// it and letting go again waits for that.
bool IsAlone(const std::shared_ptr<TextLayout>& layout) {
    if (layout.use_count() > 1)
        return false;
    const std::shared_ptr<TextLayout> share = layout; // NOLINT: taken for the wait
    return share != nullptr;
}

} // namespace

std::shared_ptr<const TextLayout> FigureCache::Find(const TextFace& face, std::string_view text, int width) {
    auto& [slot, other] = m_slots[std::hash<std::string_view>{}(text) % kSlots];
    if (IsFor(slot, text))
        return slot;
    slot.swap(other);
    if (IsFor(slot, text))
        return slot;
    const bool isFree = IsAlone(slot); // else there is none, or someone still looks at the former figure
    auto made = isFree ? std::move(slot) : std::make_shared<TextLayout>(StartLayout(face));
    made->lines.resize(1);
    made->figures = m_figures;
    m_figures->SetLine(made->lines[0], text, width);
    made->width = width;
    slot = std::move(made); // whole: without memory for it the slot is empty
    return slot;
}

FigureCache* FiguresOf(TextFace& face) {
    if (face.figuresAsked > kShapedFirst)
        return face.figures.get();
    if (++face.figuresAsked <= kShapedFirst)
        return nullptr;
    const bool worthIt = face.medium == TextMedium::Pixels && !face.measure && face.shaper && face.size.em <= kMaxEm &&
                         !face.underline && !face.strikeOut;
    if (!worthIt)
        return nullptr;
    const auto figures = std::make_shared<FigureSet>();
    if (figures->Take(face) && figures->LearnNeighbours(face))
        face.figures = std::make_shared<FigureCache>(figures);
    return face.figures.get();
}

} // namespace melkar
