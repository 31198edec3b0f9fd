#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/text/figure_text.h>
#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/text/text_face.h>
#include <MelkarCommon/platform/text/text_parts.h>
#include <MelkarCommon/platform/values/lru_cache.h>

#include <algorithm>
#include <cassert>
#include <functional>

namespace melkar {
namespace {

constexpr std::size_t kMaxLayouts = 1024;
constexpr std::ptrdiff_t kMaxLayoutBytes = 8 << 20;
constexpr std::ptrdiff_t kMaxMaskBytes = 8 << 20;
constexpr double kMaxLineEms = 1 << 19; // pixels; Pango counts 1024ths of them in an int, and glyphs may be wide

/// Cuts what lies so far to the right that nobody can see it.
void CutLine(std::string& line, double em) {
    const auto limit = static_cast<std::size_t>(kMaxLineEms / em);
    if (line.size() <= limit)
        return;
    std::size_t end = 0;
    for (std::size_t count = 0; count < limit && end < line.size(); ++count)
        end += LengthAt(line, end);
    line.resize(end);
}

struct LayoutKey {
    std::uint64_t face;
    int wrapWidth;
    bool singleLine;
    std::string_view bytes;
    bool operator==(const LayoutKey&) const = default;
};

struct LayoutKeyHash {
    std::size_t operator()(const LayoutKey& key) const {
        constexpr std::size_t kMix = 0x9E3779B97F4A7C15U;
        std::size_t hash = std::hash<std::string_view>{}(key.bytes);
        hash = (hash ^ key.face) * kMix;
        return (hash ^ (static_cast<unsigned>(key.wrapWidth) * 2U + (key.singleLine ? 1U : 0U))) * kMix;
    }
};

struct LayoutEntry {
    std::uint64_t face;
    int wrapWidth;
    bool singleLine;
    std::string bytes;
    std::shared_ptr<const TextLayout> layout;
    std::ptrdiff_t cost;

    LayoutKey Key() const { return {face, wrapWidth, singleLine, bytes}; }
};

/// Roughly what a layout takes in memory.
std::ptrdiff_t CostOf(std::size_t textBytes, const TextLayout& layout) {
    std::size_t cost = sizeof(TextLayout) + textBytes;
    for (const TextLine& line : layout.lines) {
        cost += sizeof line + line.utf8.size();
        for (const GlyphRun& run : line.runs)
            cost += sizeof run + run.utf8.size() + run.glyphs.size() * sizeof(cairo_glyph_t) +
                    run.clusters.size() * sizeof(cairo_text_cluster_t);
    }
    return static_cast<std::ptrdiff_t>(cost);
}

class LayoutCache {
public:
    /// Masks are made after the layout is added, many at a time where texts are measured first and then painted: each
    /// look-up makes room for them, too.
    std::shared_ptr<const TextLayout> Find(const LayoutKey& key) {
        const LayoutEntry* entry = entries_.Find(key);
        if (entry == nullptr)
            return nullptr;
        while (entries_.Size() > 1 && MaskBytes() > kMaxMaskBytes)
            DropOldest();
        return entry->layout;
    }

    void Add(const LayoutKey& key, const std::shared_ptr<const TextLayout>& layout) {
        const std::ptrdiff_t cost = CostOf(key.bytes.size(), *layout);
        if (cost > kMaxLayoutBytes)
            return;
        while (entries_.Size() > 0 &&
               (entries_.Size() >= kMaxLayouts || cost_ + cost > kMaxLayoutBytes || MaskBytes() > kMaxMaskBytes))
            DropOldest();
        entries_.Add({key.face, key.wrapWidth, key.singleLine, std::string(key.bytes), layout, cost});
        cost_ += cost;
    }

private:
    void DropOldest() {
        cost_ -= entries_.Oldest().cost;
        entries_.DropOldest();
    }

    LruCache<LayoutKey, LayoutEntry, LayoutKeyHash> entries_;
    std::ptrdiff_t cost_ = 0;
};

LayoutCache& ThreadLayouts() {
    static thread_local LayoutCache cache;
    return cache;
}

void FinishLayout(TextLayout& layout) {
    for (const TextLine& line : layout.lines)
        layout.width = std::max(layout.width, line.width);
}

/// Figures from ready-made glyphs if that gives what shaping would; null if not.
std::shared_ptr<const TextLayout> LayOutFigure(TextFace& face, std::string_view bytes, int wrapWidth) {
    if (!IsFigure(bytes))
        return nullptr;
    FigureCache* figures = FiguresOf(face);
    if (figures == nullptr || !figures->Figures().Covers(bytes))
        return nullptr;
    const int width = figures->Figures().Width(bytes);
    if (wrapWidth != kNoWrap && width > wrapWidth)
        return nullptr;
    return figures->Find(face, bytes, width);
}

/// Kana, Han and full-width characters, and half-width katakana.
bool HasJapanese(std::string_view utf8) {
    for (std::size_t i = 0; i < utf8.size(); i += LengthAt(utf8, i)) {
        const gunichar character = g_utf8_get_char(utf8.data() + i);
        if (g_unichar_iswide(character) != FALSE || (character >= 0xFF61 && character <= 0xFF9F))
            return true;
    }
    return false;
}

const std::shared_ptr<TextFace>& FaceFor(const std::shared_ptr<TextFace>& face, std::string_view bytes) {
    const bool isOther = face->forOthers != nullptr && !HasJapanese(DecodeText(bytes, face->charset));
    return isOther ? face->forOthers : face;
}

} // namespace

std::vector<std::string> SplitLines(std::string_view utf8, bool singleLine) {
    std::vector<std::string> lines;
    std::string line;
    bool open = false; // something stands behind the last line end
    for (std::size_t i = 0; i < utf8.size();) {
        std::size_t length = LengthAt(utf8, i);
        const bool crlf = utf8.substr(i, 2) == "\r\n";
        length += crlf ? 1 : 0;
        open = singleLine || !(crlf || utf8[i] == '\n');
        if (!open) {
            lines.push_back(std::move(line));
            line.clear();
        } else if (crlf || IsControl(utf8.substr(i, length))) {
            line += ' ';
        } else {
            line += utf8.substr(i, length);
        }
        i += length;
    }
    if (open)
        lines.push_back(std::move(line));
    return lines;
}

std::string_view WithoutTrailingBlanks(std::string_view line) { return line.substr(0, line.find_last_not_of(' ') + 1); }

TextLayout StartLayout(const TextFace& face) {
    TextLayout layout;
    layout.font = face.name;
    layout.look = face.look;
    layout.lineHeight = face.size.lineHeight;
    layout.ascent = face.size.ascent;
    layout.keepsMasks = face.medium == TextMedium::Pixels;
    return layout;
}

std::shared_ptr<const TextLayout> WithoutMasks(const std::shared_ptr<const TextLayout>& layout) {
    if (!layout->keepsMasks)
        return layout;
    const auto copy = std::make_shared<TextLayout>(*layout); // of any thread: a copy looks at no mask
    copy->keepsMasks = false;
    return copy;
}

TextLayout LayOutAnew(TextFace& face, std::string_view bytes, bool singleLine, int wrapWidth) {
    TextLayout layout = StartLayout(face);
    const auto maxLines = static_cast<std::size_t>(kFarOff / std::max(1, layout.lineHeight));
    for (std::string& paragraph : SplitLines(DecodeText(bytes, face.charset), singleLine)) {
        CutLine(paragraph, std::max(face.size.em, face.measure ? face.measure->face->size.em : 0));
        if (face.shaper && !paragraph.empty())
            ShapeParagraph(face, paragraph, wrapWidth, layout.lines);
        else
            MeasureParagraph(face, paragraph, wrapWidth, layout.lines);
        if (layout.lines.size() >= maxLines)
            break;
    }
    layout.lines.resize(std::min(layout.lines.size(), maxLines));
    for (TextLine& line : layout.lines) {
        line.underline = face.underline;
        line.strikeOut = face.strikeOut;
    }
    FinishLayout(layout);
    return layout;
}

std::shared_ptr<const TextLayout> LayOutText(const std::shared_ptr<TextFace>& wanted, std::string_view bytes,
                                             bool singleLine, int wrapWidth) {
    assert(wanted != nullptr);
    const std::shared_ptr<TextFace>& face = FaceFor(wanted, bytes);
    LayoutCache& cache = ThreadLayouts();
    const int wrap = wrapWidth == kNoWrap ? kNoWrap : std::max(wrapWidth, 0);
    if (auto figure = LayOutFigure(*face, bytes, wrap))
        return figure;
    const LayoutKey key{face->id, wrap, singleLine, bytes};
    if (auto found = cache.Find(key))
        return found;
    std::shared_ptr<const TextLayout> layout = std::make_shared<TextLayout>(LayOutAnew(*face, bytes, singleLine, wrap));
    cache.Add(key, layout);
    return layout;
}

void TrimTexts() {
    ThreadLayouts() = {};
    DropFaces();
}

} // namespace melkar
