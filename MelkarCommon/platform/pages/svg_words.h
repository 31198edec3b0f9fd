#pragma once

#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/seam/shape.h>

#include <span>
#include <string>
#include <string_view>

/// @file
/// Internal. Elements of an SVG file, put together from words.

namespace melkar {

/// Appends to a text. Numbers have at most three decimals and no zeros at their end, in any locale.
class SvgWords {
public:
    explicit SvgWords(std::string& text) : m_text(text) {}

    SvgWords& Raw(std::string_view words) {
        m_text += words;
        return *this;
    }
    /// One that is no number is 0; others end at what a reader can hold.
    SvgWords& Number(double value);
    /// Characters as content or in a value with double quotes. What XML forbids becomes a blank.
    SvgWords& Escaped(std::string_view utf8);
    SvgWords& Base64(std::string_view bytes);

    /// ` name="value"`
    SvgWords& Value(std::string_view name, double value);
    SvgWords& Value(std::string_view name, std::string_view value);
    SvgWords& Paint(std::string_view name, Color color);

    /// `x,y x,y ...`
    SvgWords& Points(std::span<const PointD> points);
    SvgWords& Point(PointD point) { return Number(point.x).Raw(",").Number(point.y); }

private:
    std::string& m_text;
};

} // namespace melkar
