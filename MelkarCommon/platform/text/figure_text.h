#pragma once

#include <MelkarCommon/platform/text/glyph_run.h>

#include <array>
#include <memory>
#include <string_view>
#include <utility>

/// @file
/// Internal. Figures put together from ready-made glyphs: most texts of a chart that are new at a redraw are short
/// numbers, and shaping each costs more than all the rest of painting it.

namespace melkar {

/// A short text of digits and the signs that stand between them.
bool IsFigure(std::string_view text);

class FigureCache;

/// The glyphs of one face for the characters of figures.
class FigureSet {
public:
    static constexpr std::string_view kCharacters = "0123456789 .,-+:/%";

    /// False for a figure with a character whose glyph depends on its neighbours: faces raise a colon between digits.
    bool Covers(std::string_view text) const;
    /// `Covers` must hold for the texts of what follows.
    int Width(std::string_view text) const;
    /// Makes `line` that of the text, in the memory that it has.
    void SetLine(TextLine& line, std::string_view text, int width) const;
    CoverageMask Mask(std::string_view text, std::vector<std::uint8_t> memory) const;

private:
    friend FigureCache* FiguresOf(TextFace& face);
    struct Glyph {
        unsigned long index = 0;
        bool isSteady = true; ///< the same beside every other character
        int width = 0;        ///< of a text that ends with it
        /// From its origin to that of the next glyph, by that one's place in `kCharacters`: pairs are kerned.
        std::array<int, kCharacters.size()> steps{};
        CoverageMask mask;
    };

    bool Take(TextFace& face);
    bool LearnNeighbours(TextFace& face);
    bool LearnSteps(std::string_view text, const GlyphRun& run);
    const Glyph& Of(char character) const;
    int Step(std::string_view text, std::size_t i) const;

    std::shared_ptr<cairo_scaled_font_t> m_font;
    std::array<Glyph, kCharacters.size()> m_glyphs;
};

/// The figures of one face that were asked for last. A figure takes the place, and the memory, of the older one of two
/// in its slot: where all figures of a chart are new at each redraw, this allocates next to nothing. With room for one
/// in a slot new figures drive out those of the scale, which are made again: a month takes 3% more instructions.
class FigureCache {
public:
    explicit FigureCache(std::shared_ptr<const FigureSet> figures) : m_figures(std::move(figures)) {}

    /// The layout of `text`, `width` wide; `face` is that of the figures.
    std::shared_ptr<const TextLayout> Find(const TextFace& face, std::string_view text, int width);
    const FigureSet& Figures() const { return *m_figures; }

private:
    static constexpr std::size_t kSlots = 128;

    std::shared_ptr<const FigureSet> m_figures;
    std::array<std::array<std::shared_ptr<TextLayout>, 2>, kSlots> m_slots; ///< the younger one first
};

/// The face's figures; null if its digits depend on their neighbours or aren't worth it, and until enough were asked
/// for: trying costs as much as shaping some forty figures, more than a single picture has.
FigureCache* FiguresOf(TextFace& face);

} // namespace melkar
