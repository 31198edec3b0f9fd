#pragma once

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Internal. Turns bytes and a font into lines of placed glyphs, once for each distinct text, and keeps them in a
/// bounded cache of the thread. Measuring and painting take the same entry.
///
/// All surfaces but records leave a text the room that it takes on a screen, where each glyph advances by whole pixels
/// at 96 dots an inch: so lines break at the same words everywhere, and a layout with room for a text on screen has it
/// on paper. At another dpi the font is measured at the size that it has on a screen, to the pixel, and lengths are
/// scaled. The glyphs themselves are shaped for their surface, and each line is stretched to its room.

namespace melkar {

/// What the text is for: it decides how glyphs are drawn and which metrics count.
enum class TextMedium : std::uint8_t {
    Pixels, ///< glyphs that are crisp on pixels
    Page,   ///< exact outlines
    Fixed,  ///< built-in metrics, no font of the machine: for recordings
};

/// A font as it is used: description, medium and measured height of a line. Opaque beyond that.
class TextFace;

/// Ready-made glyphs for figures. Opaque.
class FigureSet;

/// The face of a description on this thread; made at the first call, kept until the thread ends or the bounded
/// cache lets it go. Never null: what can't be made falls back to the default face. Valid until the next call.
const std::shared_ptr<TextFace>& FindFace(const LOGFONTA& description, TextMedium medium, int dpi = kScreenDpi);

/// Faces that came without a font of the machine, though their texts should be seen.
std::size_t CountOfMissingFonts();

/// Glyphs of one font in one direction. Opaque; `glyph_run.h` has it for those who paint them.
struct GlyphRun;

/// Coverage of a line's glyphs, 0 to 255 a pixel; placed at (left, top) from the line's top-left corner.
struct CoverageMask {
    int escapement = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int stride = 0;
    std::vector<std::uint8_t> coverage;
    double scale = 1; ///< pixels a unit of the layout
};

/// The coverage of a line that was asked for last. It belongs to the thread that made it: a copy has none, and looks at
/// nothing that thread may be writing.
struct KeptMask {
    KeptMask() = default;
    KeptMask(const KeptMask&) noexcept {}
    KeptMask(KeptMask&&) = default;
    KeptMask& operator=(const KeptMask& other) noexcept {
        if (this != &other)
            mask.reset();
        return *this;
    }
    KeptMask& operator=(KeptMask&&) = default;

    std::shared_ptr<CoverageMask> mask;
    bool isOfFormer = false; ///< of what stood there before: nothing but memory to use again
};

struct TextLine {
    std::string utf8; ///< the characters of the line, without its line end
    int width = 0;    ///< the room that it takes, device units
    /// What makes its glyphs fill the room: where they stand, and how wide they are, is times this.
    double stretch = 1;
    int letters = 0; ///< what can stand further apart in place of that; 0 where letters join
    std::vector<GlyphRun> runs;
    bool underline = false;
    bool strikeOut = false;
    mutable KeptMask kept; ///< if the layout keeps them
};

/// A font as a page names it to its readers.
struct FontLook {
    std::string families; ///< CSS: the wanted one, what stands in for it here, and a generic one
    std::string language; ///< whose forms Han characters have; mostly empty
    double em = 0;        ///< device units
    int weight = FW_NORMAL;
    bool italic = false;
};

/// Lines one below the other, each `lineHeight` high.
struct TextLayout {
    std::string font; ///< for records: "face size[ bold][ italic]"
    std::shared_ptr<const FontLook> look;
    int lineHeight = 0;
    int ascent = 0;
    int width = 0; ///< that of the widest line
    std::vector<TextLine> lines;
    bool isEnlarged = false;                  ///< glyphs stand between pixels
    bool keepsMasks = false;                  ///< it is for pixels, and stays with the thread that made it
    std::shared_ptr<const FigureSet> figures; ///< what the line was put together from; mostly null

    int Height() const { return lineHeight * static_cast<int>(lines.size()); }
};

/// Lets go what this thread keeps of texts and fonts; they are made anew when they are needed.
void TrimTexts();

constexpr int kNoWrap = -1;

/// The layout of a text. Lines break at CR LF and LF unless `singleLine` (then such characters count as blanks),
/// and at `wrapWidth` device units unless it is `kNoWrap`; a line feed at the very end adds no line, an empty text
/// has none. Bytes are decoded as valid UTF-8, else in the code page of the face's character set. A Japanese face
/// that stands in for another one is for texts with Japanese characters; others take the default face, in lines as
/// high.
std::shared_ptr<const TextLayout> LayOutText(const std::shared_ptr<TextFace>& wanted, std::string_view bytes,
                                             bool singleLine, int wrapWidth);

/// A layout that may go to another thread: what a record keeps. It is the given one if that keeps no masks, else a
/// copy.
std::shared_ptr<const TextLayout> WithoutMasks(const std::shared_ptr<const TextLayout>& layout);

/// The coverage of a line turned by `escapement` tenths of a degree about its top-left corner, on a picture of `scale`
/// pixels a unit; a layout that keeps masks keeps it until another one is asked for. Null if the line has no ink, or if
/// it would take more than half a million pixels: then `FillLine` on a cairo context has to do.
std::shared_ptr<const CoverageMask> LineMask(const TextLayout& layout, std::size_t line, int escapement,
                                             double scale = 1);

/// A step of an outline: `Move` and `Line` to a point, `Curve` by two handles to a third one, `Close` to the start.
struct OutlineStep {
    enum Kind : char { Move = 'M', Line = 'L', Curve = 'C', Close = 'z' };
    Kind kind;
    PointD points[3];

    int Points() const { return kind == Close ? 0 : kind == Curve ? 3 : 1; }
};

/// The outline of a line's glyphs and rules, from its top-left corner, not turned. Filled by the winding rule.
std::vector<OutlineStep> LineOutline(const TextLayout& layout, std::size_t line);

} // namespace melkar
