#include <MelkarCommon/platform/text/figure_text.h>

#include <MelkarCommon/platform/text/text_face.h>
#include <MelkarCommon/platform/text/text_parts.h>

#include <algorithm>
#include <climits>

namespace melkar {
namespace {

constexpr std::size_t kMaxLength = 24; // bytes; longer texts are rare enough to be shaped
constexpr double kMaxEm = 48;          // pixels; larger glyphs would take too much memory
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

/// Adds a glyph to the mask of a text; only where glyphs reach into each other is there something to add to.
void AddCoverage(const CoverageMask& glyph, int x, int inkedTo, CoverageMask& mask) {
    const bool alone = x + glyph.left >= inkedTo;
    const std::uint8_t* source = glyph.coverage.data();
    std::uint8_t* target =
        mask.coverage.data() + std::ptrdiff_t{glyph.top - mask.top} * mask.stride + (x + glyph.left - mask.left);
    for (int row = 0; row < glyph.height; ++row, source += glyph.stride, target += mask.stride) {
        if (alone) {
            std::copy_n(source, glyph.width, target);
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

int FigureSet::Width(std::string_view text) const {
    int width = 0;
    for (const char c : text)
        width += Of(c).advance;
    return width;
}

void FigureSet::SetLine(TextLine& line, std::string_view text, int width) const {
    line.utf8 = text;
    line.width = width;
    line.mask.reset();
    line.runs.resize(1);
    GlyphRun& run = line.runs[0];
    run.font = m_font;
    run.utf8 = text;
    run.clusters.assign(text.size(), {1, 1});
    run.glyphs.clear();
    int x = 0;
    for (const char c : text) {
        run.glyphs.push_back({Of(c).index, static_cast<double>(x), 0.0});
        x += Of(c).advance;
    }
}

CoverageMask FigureSet::Mask(std::string_view text) const {
    int left = INT_MAX;
    int top = INT_MAX;
    int right = INT_MIN;
    int bottom = INT_MIN;
    int x = 0;
    for (const char c : text) {
        const CoverageMask& glyph = Of(c).mask;
        if (glyph.width > 0) {
            left = std::min(left, x + glyph.left);
            right = std::max(right, x + glyph.left + glyph.width);
            top = std::min(top, glyph.top);
            bottom = std::max(bottom, glyph.top + glyph.height);
        }
        x += Of(c).advance;
    }
    if (left >= right)
        return {};
    CoverageMask mask{0, left, top, right - left, bottom - top, right - left, {}};
    mask.coverage.resize(static_cast<std::size_t>(mask.stride) * static_cast<std::size_t>(mask.height));
    x = 0;
    int inkedTo = INT_MIN;
    for (const char c : text) {
        const CoverageMask& glyph = Of(c).mask;
        if (glyph.width > 0) {
            AddCoverage(glyph, x, inkedTo, mask);
            inkedTo = std::max(inkedTo, x + glyph.left + glyph.width);
        }
        x += Of(c).advance;
    }
    return mask;
}

bool FigureSet::Take(TextFace& face) {
    for (std::size_t i = 0; i < kCharacters.size(); ++i) {
        const TextLayout layout = LayOutAnew(face, kCharacters.substr(i, 1), true, kNoWrap);
        const GlyphRun* run = OnlyRun(layout);
        if (run == nullptr || run->glyphs[0].x != 0 || (m_font != nullptr && run->font.get() != m_font.get()))
            return false;
        m_font = run->font;
        m_glyphs[i] = {run->glyphs[0].index, layout.width, DrawMask(layout, layout.lines[0], 0)};
    }
    return true;
}

bool FigureSet::IsAdditive(TextFace& face) const {
    const std::string pairs = AllPairs();
    const TextLayout layout = LayOutAnew(face, pairs, true, kNoWrap);
    const GlyphRun* run = OnlyRun(layout);
    if (run == nullptr || run->font.get() != m_font.get())
        return false;
    double x = 0;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const Glyph& glyph = Of(pairs[i]);
        if (run->glyphs[i].index != glyph.index || run->glyphs[i].x != x)
            return false;
        x += glyph.advance;
    }
    return true;
}

std::shared_ptr<const TextLayout> FigureCache::Find(const TextFace& face, std::string_view text, int width) {
    std::shared_ptr<TextLayout>& slot = m_slots[std::hash<std::string_view>{}(text) % kSlots];
    if (slot && slot->lines[0].utf8 == text)
        return slot;
    if (!slot || slot.use_count() > 1) { // someone still looks at the former figure
        slot = std::make_shared<TextLayout>(StartLayout(face));
        slot->lines.resize(1);
        slot->figures = m_figures;
    }
    m_figures->SetLine(slot->lines[0], text, width);
    slot->width = width;
    return slot;
}

FigureCache* FiguresOf(TextFace& face) {
    if (face.figuresTried)
        return face.figures.get();
    face.figuresTried = true;
    const bool worthIt = face.medium == TextMedium::Pixels && face.shaper && face.size.em <= kMaxEm &&
                         !face.underline && !face.strikeOut;
    if (!worthIt)
        return nullptr;
    const auto figures = std::make_shared<FigureSet>();
    if (figures->Take(face) && figures->IsAdditive(face))
        face.figures = std::make_shared<FigureCache>(figures);
    return face.figures.get();
}

} // namespace melkar
