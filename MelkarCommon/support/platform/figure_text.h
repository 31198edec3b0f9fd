#pragma once

#include <MelkarCommon/support/platform/text_engine.h>

#include <array>
#include <memory>
#include <string_view>

/// @file
/// Internal. Figures put together from ready-made glyphs: most texts of a chart that are new at a redraw are short
/// numbers, and shaping each costs more than all the rest of painting it.

namespace melkar {

/// A short text of digits and the signs that stand between them.
bool IsFigure(std::string_view text);

/// The glyphs of one face for all characters of figures.
class FigureSet {
public:
    static constexpr std::string_view kCharacters = "0123456789 .,-+:/%";

    /// All of `text` must be in `kCharacters`.
    int Width(std::string_view text) const;
    TextLine Line(std::string_view text, int width) const;
    CoverageMask Mask(std::string_view text) const;

private:
    friend std::shared_ptr<const FigureSet> FiguresOf(TextFace& face);
    struct Glyph {
        unsigned long index = 0;
        int advance = 0;
        CoverageMask mask;
    };

    bool Take(TextFace& face);
    bool IsAdditive(TextFace& face) const;
    const Glyph& Of(char character) const;

    std::shared_ptr<cairo_scaled_font_t> font_;
    std::array<Glyph, kCharacters.size()> glyphs_;
};

/// The face's figures, tried at the first call; null if its glyphs depend on their neighbours, or aren't worth it.
std::shared_ptr<const FigureSet> FiguresOf(TextFace& face);

} // namespace melkar
