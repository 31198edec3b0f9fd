#include <MelkarCommon/platform/record/recording_parts.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/text/text_engine.h>
#include <MelkarCommon/platform/values/number_text.h>

#include <array>
#include <numbers>
#include <sstream>
#include <string_view>

/// @file
/// A record as text, one operation a line, in the order of drawing:
///
///     fill      L,T WxH #RRGGBB
///     line      X,Y X,Y #RRGGBB wN [dash ON,OFF | dot ON,OFF] [phase N] [gaps #RRGGBB]
///     text      "..." X,Y WxH "font" #RRGGBB [angle N]
///     ellipse   CX,CY RXxRY PAINT
///     slice     CX,CY RXxRY from DEGREES sweep DEGREES PAINT
///     polygon   X,Y X,Y ... [winding] PAINT
///     image     L,T WxH from WxH [or|and]
///     copy      L,T WxH from X,Y
///
/// PAINT is "fill #RRGGBB" or "stroke #RRGGBB wN". Words are separated by one blank. Lengths are device units, with at
/// most three decimals and no zeros at their end. A line leaves out its end point. A text's position is its top-left
/// corner, its size that of the line; "angle" is its turn about that corner in tenths of a degree, counter-clockwise,
/// as are the degrees of a slice, from the right. " clip L,T R,B" stands at the end where it cuts what the line says.
/// "or" and "and" combine an image with what is there. "copy" tells that the lines behind it come from another
/// record. In a quoted text stand \" \\ \n \r \t and, for other control characters, \xNN.

namespace melkar {

namespace {

/// Puts a line together from words.
class Words {
public:
    explicit Words(std::string& text) : m_text(text) {}

    Words& Word(std::string_view word) {
        if (!m_text.empty() && m_text.back() != '\n')
            m_text += ' ';
        m_text += word;
        return *this;
    }
    Words& Number(double value);
    Words& Pair(double one, char between, double other) {
        Word("");
        AppendLength(m_text, one);
        m_text += between;
        AppendLength(m_text, other);
        return *this;
    }
    Words& Point(double x, double y) { return Pair(x, ',', y); }
    Words& Size(double width, double height) { return Pair(width, 'x', height); }
    Words& Size(const RECT& r) { return Size(double{1} * r.right - r.left, double{1} * r.bottom - r.top); }
    Words& Paint(Color color);
    Words& Width(double width) {
        Word("w");
        AppendLength(m_text, width);
        return *this;
    }
    Words& Quoted(std::string_view text);
    void Break() { m_text += '\n'; }

private:
    void AppendEscaped(char c);

    std::string& m_text;
};

void Words::AppendEscaped(char c) {
    constexpr std::string_view kNamed = "\"\\\n\r\t";
    constexpr std::string_view kNames = "\"\\nrt";
    const auto byte = static_cast<unsigned char>(c);
    if (const std::size_t i = kNamed.find(c); i != std::string_view::npos) {
        m_text += '\\';
        m_text += kNames[i];
    } else if (byte < 0x20 || byte == 0x7F) {
        m_text += "\\x";
        AppendHex(m_text, byte, 2, kLargeHex);
    } else {
        m_text += c;
    }
}

Words& Words::Number(double value) {
    Word("");
    AppendLength(m_text, value);
    return *this;
}

Words& Words::Paint(Color color) {
    Word("#");
    AppendHex(m_text, color, 6, kLargeHex);
    return *this;
}

Words& Words::Quoted(std::string_view text) {
    Word("\"");
    for (const char c : text)
        AppendEscaped(c);
    m_text += '"';
    return *this;
}

void FormatPattern(Words& words, const Stroke& stroke) {
    if (stroke.IsSolid())
        return;
    words.Word(stroke.on == stroke.off ? "dot" : "dash").Point(stroke.on, stroke.off);
    if (stroke.phase != 0)
        words.Word("phase").Number(stroke.phase);
    if (stroke.gaps)
        words.Word("gaps").Paint(stroke.gapColor);
}

void FormatText(Words& words, const TextOp& text) {
    const TextLine& line = text.layout->lines[text.line];
    words.Word("text").Quoted(line.utf8).Point(text.at.x, text.at.y).Size(line.width, text.layout->lineHeight);
    words.Quoted(text.layout->font).Paint(text.color);
    if (text.escapement != 0)
        words.Word("angle").Number(text.escapement);
}

void FormatPolygon(Words& words, const PolygonShape& polygon) {
    words.Word("polygon");
    for (const POINT& point : polygon.points)
        words.Point(point.x, point.y);
    if (polygon.winding)
        words.Word("winding");
}

void FormatRound(Words& words, std::string_view word, const EllipseShape& ellipse) {
    words.Word(word).Point(ellipse.center.x, ellipse.center.y).Size(ellipse.radius.x, ellipse.radius.y);
}

void FormatSlice(Words& words, const SliceShape& slice) {
    constexpr double kDegrees = 180 / std::numbers::pi;
    FormatRound(words, "slice", slice.whole);
    words.Word("from").Number(slice.from * kDegrees).Word("sweep").Number(slice.sweep * kDegrees);
}

Words& FormatShape(Words& words, const Shape& shape) {
    std::visit(Overloaded{
                   [&](const PolygonShape& polygon) { FormatPolygon(words, polygon); },
                   [&](const EllipseShape& ellipse) { FormatRound(words, "ellipse", ellipse); },
                   [&](const SliceShape& slice) { FormatSlice(words, slice); },
               },
               shape);
    return words;
}

void FormatBlit(Words& words, const BlitOp& blit) {
    words.Word("image").Point(blit.target.left, blit.target.top).Size(blit.target).Word("from").Size(blit.source);
    if (blit.operation != SRCCOPY)
        words.Word(blit.operation == SRCAND ? "and" : "or");
}

void FormatMark(Words& words, const CopyMark& mark) {
    words.Word("copy").Point(mark.target.left, mark.target.top).Size(mark.target);
    words.Word("from").Point(mark.source.left, mark.source.top);
}

void FormatSegment(Words& words, POINT from, POINT to, const Stroke& stroke) {
    words.Word("line").Point(from.x, from.y).Point(to.x, to.y).Paint(stroke.color).Width(stroke.width);
    FormatPattern(words, stroke);
}

/// The end of a line, behind what `op` says in it.
void EndLine(Words& words, const RecordedOp& op) {
    if (IsCut(op))
        words.Word("clip").Point(op.clip.left, op.clip.top).Point(op.clip.right, op.clip.bottom);
    words.Break();
}

/// Calls take(segment) for each, as if it had been drawn alone; those beside the clip are left out.
template <class Take> void ForEachShown(const StrokePolylineOp& lines, const RECT& clip, const Take& take) {
    ForEachSegment(lines.points, lines.stroke, [&](POINT from, POINT to, const Stroke& stroke) {
        const RecordedOp alone{StrokePolylineOp{LinePoints(std::array{from, to}), stroke}, clip};
        if (IsEmptyRect(clip) || !IsEmptyRect(ClipBox(BoxOf(alone), clip)))
            take(alone);
    });
}

void FormatPolyline(Words& words, const StrokePolylineOp& lines, const RECT& clip) {
    ForEachShown(lines, clip, [&](const RecordedOp& alone) {
        const auto& [points, stroke] = std::get<StrokePolylineOp>(alone.verb);
        FormatSegment(words, points[0], points[1], stroke);
        EndLine(words, alone);
    });
}

void FormatOp(Words& words, const RecordedOp& op) {
    if (const auto* lines = std::get_if<StrokePolylineOp>(&op.verb))
        return FormatPolyline(words, *lines, op.clip);
    std::visit(Overloaded{
                   [&](const Fill& fill) {
                       words.Word("fill").Point(fill.rect.left, fill.rect.top).Size(fill.rect).Paint(fill.color);
                   },
                   [&](const FillShapeOp& fill) { FormatShape(words, fill.shape).Word("fill").Paint(fill.color); },
                   [&](const StrokeShapeOp& outline) {
                       FormatShape(words, outline.shape).Word("stroke").Paint(outline.stroke.color);
                       words.Width(outline.stroke.width);
                   },
                   [](const StrokePolylineOp&) {}, // a line for each segment, above
                   [&](const TextOp& text) { FormatText(words, text); },
                   [&](const BlitOp& blit) { FormatBlit(words, blit); },
                   [&](const CopyMark& mark) { FormatMark(words, mark); },
               },
               op.verb);
    EndLine(words, op);
}

} // namespace

std::string FormatRecording(const std::vector<RecordedOp>& ops) {
    std::string text;
    Words words(text);
    for (const RecordedOp& op : ops)
        FormatOp(words, op);
    return text;
}

std::vector<std::string> LinesOf(const RecordedOp& op) {
    std::istringstream text(FormatRecording({op}));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

std::vector<RecordedOp> PartsOf(const RecordedOp& op) {
    const auto* lines = std::get_if<StrokePolylineOp>(&op.verb);
    if (lines == nullptr)
        return {op};
    std::vector<RecordedOp> parts;
    ForEachShown(*lines, op.clip, [&](const RecordedOp& alone) { parts.push_back(alone); });
    return parts;
}

} // namespace melkar

int RecordingVersion() { return 1; }
