#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/text/text_face.h>
#include <MelkarCommon/platform/text/text_parts.h>
#include <MelkarCommon/platform/text/text_wrap.h>

#include <cmath>

/// @file
/// Texts without a font: characters have one of two widths, on every machine.

namespace melkar {
namespace {

constexpr double kAdvance = 0.6; // ems
constexpr double kWideAdvance = 1;

int Pixels(double advance) {
    constexpr double kRounding = 1e-9; // a product that is whole but for rounding isn't rounded up
    return static_cast<int>(std::ceil(advance - kRounding));
}

/// Han characters, kana, Hangul and full-width forms are an em wide.
std::vector<std::int64_t> ReachOf(std::string_view text, double em) {
    const int narrow = Pixels(em * kAdvance);
    const int wide = Pixels(em * kWideAdvance);
    std::vector<std::int64_t> reach(text.size() + 1);
    std::int64_t pen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        reach[i] = pen;
        if (!IsContinuation(text[i]))
            pen += g_unichar_iswide(g_utf8_get_char(text.data() + i)) != FALSE ? wide : narrow;
    }
    reach[text.size()] = pen;
    return reach;
}

std::vector<std::size_t> BreaksIn(const std::string& text) {
    const auto characters = static_cast<std::size_t>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
    std::vector<PangoLogAttr> attributes(characters + 1);
    pango_get_log_attrs(text.data(), static_cast<int>(text.size()), -1, pango_language_from_string("en"),
                        attributes.data(), static_cast<int>(attributes.size()));
    return BreaksOf(text, attributes.data());
}

} // namespace

void MeasureParagraph(const TextFace& face, const std::string& paragraph, int wrapWidth, std::vector<TextLine>& lines) {
    WrapText text{paragraph, {paragraph.size()}, ReachOf(paragraph, face.size.em)};
    if (wrapWidth != kNoWrap)
        text.breaks = BreaksIn(paragraph);
    for (const LineSpan& span : WrapLines(text, wrapWidth != kNoWrap ? wrapWidth : text.reach.back())) {
        TextLine line;
        line.utf8 = paragraph.substr(span.start, span.end - span.start);
        line.width = static_cast<int>(text.reach[span.end] - text.reach[span.start]);
        lines.push_back(std::move(line));
    }
}

} // namespace melkar
