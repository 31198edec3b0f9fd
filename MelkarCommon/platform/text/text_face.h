#pragma once

#include <MelkarCommon/platform/text/glyph_run.h>

#include <pango/pangocairo.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// @file
/// Internal. A font of the machine as texts use it.

namespace melkar {

class FigureCache;
class TextFace;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T> using ObjectPtr = std::unique_ptr<T, Unref>;

/// Size of a font in device units.
struct FaceSize {
    double em = 0;
    int lineHeight = 0;
    int ascent = 0;
};

/// @param height as `lfHeight`. @param up the font's ascent as a part of its em @param down its descent.
FaceSize SizeFace(int height, double up, double down);

/// The face that texts of another one are measured with, on the screen, and how lengths there become those of a
/// surface with `dpi` units an inch, and back.
struct ScreenMeasure {
    std::shared_ptr<TextFace> face;
    int dpi;

    /// The nearest.
    int ToScreen(int length) const;
    /// The nearest, or a longer one where that would be less than `length` on the screen: below `kScreenDpi`.
    int FromScreen(int length) const;
};

/// Lets the thread's faces go, and the machine's fonts with them.
void DropFaces();

/// Where fontconfig or a thread of Pango finds no memory, the process ends. So they are asked for a face, and for what
/// stands in where it lacks characters, only while there is room for what they take: the stacks of some threads, and
/// the fonts' list. Else this throws std::bad_alloc, after a line in the log at the first time.
void RequireRoom();

/// Belongs to the thread that made it.
class TextFace {
public:
    TextFace(const LOGFONTA& description, TextMedium medium, int dpi);

    const std::uint64_t id; ///< of no other face of the process, past ones included
    const TextMedium medium;
    const int charset;
    const bool underline;
    const bool strikeOut;
    FaceSize size;
    std::string name; ///< for records: "face size[ bold][ italic]"
    std::shared_ptr<const FontLook> look;
    /// What decides the room that texts of this face take; nothing: the face itself.
    std::optional<ScreenMeasure> measure;
    /// The face of texts without Japanese characters, in lines of the same height; null: this one.
    std::shared_ptr<TextFace> forOthers;

    /// What paragraphs are shaped in; null if there are no glyphs: fixed medium, or a machine without fonts.
    ObjectPtr<PangoContext> shaper;

    std::shared_ptr<FigureCache> figures; ///< null until tried, and if figures can't be put together
    int figuresAsked = 0;                 ///< how often, until they were tried
    bool unknownReported = false;
    bool hasShaped = false; ///< a text, for the first of which Pango looks for other fonts

private:
    void MakeShaper(const LOGFONTA& description, const std::string& family);
    void MeasureOnScreen(const LOGFONTA& description, int dpi);
    bool HasFamily(const std::string& family) const;
};

} // namespace melkar
