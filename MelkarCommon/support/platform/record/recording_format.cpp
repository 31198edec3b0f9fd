#include <MelkarCommon/support/platform/record/recording_parts.h>
#include <MelkarCommon/support/platform/seam/backend.h>
#include <MelkarCommon/support/platform/seam/polyline.h>

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
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
        Append(one);
        m_text += between;
        Append(other);
        return *this;
    }
    Words& Point(double x, double y) { return Pair(x, ',', y); }
    Words& Size(double width, double height) { return Pair(width, 'x', height); }
    Words& Size(const RECT& r) { return Size(double{1} * r.right - r.left, double{1} * r.bottom - r.top); }
    Words& Paint(Color color);
    Words& Width(double width) {
        Word("w");
        Append(width);
        return *this;
    }
    Words& Quoted(std::string_view text);

private:
    void Append(double value);
    void AppendHex(unsigned value, int digits);
    void AppendEscaped(char c);

    std::string& m_text;
};

void Words::Append(double value) {
    constexpr int kDecimals = 3;
    std::array<char, 400> buffer{}; // the largest double has 309 digits
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, kDecimals);
    std::string_view number(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    if (std::isfinite(value))
        number = number.substr(0, number.find_last_not_of('0') + 1);
    if (number.ends_with('.'))
        number.remove_suffix(1);
    m_text += number == "-0" ? "0" : number;
}

void Words::AppendHex(unsigned value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        m_text += "0123456789ABCDEF"[(value >> static_cast<unsigned>(shift)) & 0xFU];
}

void Words::AppendEscaped(char c) {
    constexpr std::string_view kNamed = "\"\\\n\r\t";
    constexpr std::string_view kNames = "\"\\nrt";
    const auto byte = static_cast<unsigned char>(c);
    if (const std::size_t i = kNamed.find(c); i != std::string_view::npos) {
        m_text += '\\';
        m_text += kNames[i];
    } else if (byte < 0x20 || byte == 0x7F) {
        m_text += "\\x";
        AppendHex(byte, 2);
    } else {
        m_text += c;
    }
}

Words& Words::Number(double value) {
    Word("");
    Append(value);
    return *this;
}

Words& Words::Paint(Color color) {
    Word("#");
    AppendHex(color & 0xFFFFFFU, 6);
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

void FormatText(Words& words, const RecordedOp& op) {
    const TextLine& line = op.layout->lines[op.line];
    words.Word("text").Quoted(line.utf8).Point(op.from.x, op.from.y).Size(line.width, op.layout->lineHeight);
    words.Quoted(op.layout->font).Paint(op.color);
    if (op.escapement != 0)
        words.Word("angle").Number(op.escapement);
}

void FormatShape(Words& words, const Shape& shape) {
    constexpr double kDegrees = 180 / std::numbers::pi;
    if (shape.kind == Shape::Kind::Polygon) {
        words.Word("polygon");
        for (const POINT& point : shape.points)
            words.Point(point.x, point.y);
        if (shape.winding)
            words.Word("winding");
        return;
    }
    const bool slice = shape.kind == Shape::Kind::Slice;
    words.Word(slice ? "slice" : "ellipse").Point(shape.center.x, shape.center.y).Size(shape.radius.x, shape.radius.y);
    if (slice)
        words.Word("from").Number(shape.from * kDegrees).Word("sweep").Number(shape.sweep * kDegrees);
}

void FormatBlit(Words& words, const RecordedOp& op) {
    words.Word("image").Point(op.rect.left, op.rect.top).Size(op.rect).Word("from").Size(op.source);
    if (op.operation != SRCCOPY)
        words.Word(op.operation == SRCAND ? "and" : "or");
}

/// A polyline of two points.
void FormatLine(Words& words, const RecordedOp& op) {
    words.Word("line").Point(op.points[0].x, op.points[0].y).Point(op.points[1].x, op.points[1].y);
    words.Paint(op.stroke.color).Width(op.stroke.width);
    FormatPattern(words, op.stroke);
}

void FormatOp(Words& words, const RecordedOp& op) {
    switch (op.verb) {
    case RecordedOp::Verb::FillRect:
        words.Word("fill").Point(op.rect.left, op.rect.top).Size(op.rect).Paint(op.color);
        break;
    case RecordedOp::Verb::FillShape:
        FormatShape(words, op.shape);
        words.Word("fill").Paint(op.color);
        break;
    case RecordedOp::Verb::StrokeShape:
        FormatShape(words, op.shape);
        words.Word("stroke").Paint(op.stroke.color).Width(op.stroke.width);
        break;
    case RecordedOp::Verb::StrokePolyline:
        FormatLine(words, op);
        break;
    case RecordedOp::Verb::Text:
        FormatText(words, op);
        break;
    case RecordedOp::Verb::Blit:
        FormatBlit(words, op);
        break;
    case RecordedOp::Verb::Copy:
        words.Word("copy").Point(op.rect.left, op.rect.top).Size(op.rect);
        words.Word("from").Point(op.source.left, op.source.top);
        break;
    }
    if (IsCut(op))
        words.Word("clip").Point(op.clip.left, op.clip.top).Point(op.clip.right, op.clip.bottom);
}

/// Each segment as if it had been drawn alone; those beside the clip are left out.
void FormatSegments(Words& words, std::string& text, const RecordedOp& op) {
    ForEachSegment(op.points, op.stroke, [&](POINT from, POINT to, const Stroke& stroke) {
        RecordedOp line;
        line.verb = op.verb;
        line.points = {from, to};
        line.stroke = stroke;
        line.clip = op.clip;
        const bool isHidden = !IsEmptyRect(op.clip) && IsEmptyRect(ClipBox(BoxOf(line), op.clip));
        if (isHidden)
            return;
        FormatOp(words, line);
        text += '\n';
    });
}

} // namespace

std::string FormatRecording(const std::vector<RecordedOp>& ops) {
    std::string text;
    Words words(text);
    for (const RecordedOp& op : ops) {
        if (op.verb == RecordedOp::Verb::StrokePolyline) {
            FormatSegments(words, text, op);
            continue;
        }
        FormatOp(words, op);
        text += '\n';
    }
    return text;
}

} // namespace melkar
