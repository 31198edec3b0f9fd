// cairo and Pango by hand, as somebody does it who knows them: fonts, layouts and surfaces are kept.

#include "work.h"

#include <pango/pangocairo.h>

#include <cmath>
#include <map>

namespace {

constexpr double kPi = 3.14159265358979323846;

/// A surface, and texts on it.
class Canvas {
public:
    Canvas(int width, int height)
        : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)), cr(cairo_create(m_surface)),
          m_layout(pango_cairo_create_layout(cr)) {}
    ~Canvas() {
        for (auto& [key, font] : m_fonts)
            pango_font_description_free(font);
        g_object_unref(m_layout);
        cairo_destroy(cr);
        cairo_surface_destroy(m_surface);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void Color(int red, int green, int blue) { cairo_set_source_rgb(cr, red / 255.0, green / 255.0, blue / 255.0); }
    void Fill(double x, double y, double width, double height) {
        cairo_rectangle(cr, x, y, width, height);
        cairo_fill(cr);
    }
    void Line(double x0, double y0, double x1, double y1) {
        cairo_move_to(cr, x0, y0);
        cairo_line_to(cr, x1, y1);
        cairo_stroke(cr);
    }
    /// `across` and `down` say which part of the text lies at the point: 0 its left or top, 1 its right or bottom.
    void Text(const std::string& text, const char* font, double x, double y, double across, double down = 0.5) {
        PangoFontDescription*& face = m_fonts[font];
        if (!face)
            face = pango_font_description_from_string(font);
        pango_layout_set_font_description(m_layout, face);
        pango_layout_set_text(m_layout, text.data(), static_cast<int>(text.size()));
        int width = 0;
        int height = 0;
        pango_layout_get_pixel_size(m_layout, &width, &height);
        cairo_move_to(cr, x - across * width, y - down * height);
        pango_cairo_show_layout(cr, m_layout);
    }
    void Write(const char* path) { cairo_surface_write_to_png(m_surface, path); }

private:
    cairo_surface_t* m_surface;

public:
    cairo_t* cr;

private:
    PangoLayout* m_layout;
    std::map<std::string, PangoFontDescription*> m_fonts;
};

constexpr const char* kPlain = "Inter 10";
constexpr const char* kBold = "Inter Bold 15";

class Cairo : public Peer {
public:
    ~Cairo() override { delete m_canvas; }

    void Draw(const MonthData& month) override {
        if (!m_canvas)
            m_canvas = new Canvas(MonthData::kWidth, MonthData::kHeight);
        Canvas& on = *m_canvas;
        constexpr double kLeft = 73;
        constexpr double kTop = 58;
        constexpr double kRight = 882;
        constexpr double kBottom = 455;
        const auto yOf = [](double steps) { return kBottom - std::floor(steps * (kBottom - kTop) / MonthData::kTop); };
        on.Color(255, 255, 255);
        cairo_paint(on.cr);
        on.Color(38, 50, 66);
        on.Text(MonthData::Title(), kBold, 6, 14, 0);
        cairo_set_line_width(on.cr, 1);
        for (int value = 0; value <= MonthData::kTop; value += MonthData::kStep) {
            on.Color(198, 206, 216);
            on.Line(kLeft, yOf(value) + 0.5, kRight, yOf(value) + 0.5);
            on.Color(0, 0, 0);
            on.Text(std::to_string(value), kPlain, kLeft - 5, yOf(value), 1);
        }
        const double slot = (kRight - kLeft) / kDays;
        for (int day = 0; day < kDays; ++day) {
            const int steps = month.steps[static_cast<std::size_t>(day)];
            const double left = std::floor(kLeft + day * slot + slot / 4);
            steps >= MonthData::kTarget ? on.Color(14, 92, 72) : on.Color(124, 146, 172);
            on.Fill(left, yOf(steps), std::floor(slot / 2), kBottom - yOf(steps));
            on.Color(255, 255, 255);
            on.Color(0, 0, 0);
            on.Text(std::to_string(steps), kPlain, left + slot / 4, yOf(steps) - 1, 0.5, 1);
            if (day % MonthData::kDateStep == 0) {
                on.Text(MonthData::Date(day), kPlain, left + slot / 4, kBottom + 8, 0.5, 0);
                on.Color(198, 206, 216);
                on.Line(left + slot / 4, kBottom - 4, left + slot / 4, kBottom + 5);
            }
        }
        on.Color(0, 0, 0);
        on.Text(MonthData::TargetText(), kPlain, kRight, 20, 1);
        on.Color(186, 72, 8);
        const double dots[] = {3, 3};
        cairo_set_dash(on.cr, dots, 2, 0);
        cairo_set_line_width(on.cr, 4);
        on.Line(kRight - 200, 20, kRight - 140, 20);
        on.Line(kLeft, yOf(MonthData::kTarget), kRight, yOf(MonthData::kTarget));
        cairo_set_dash(on.cr, nullptr, 0, 0);
        cairo_set_line_width(on.cr, 1);
        on.Color(198, 206, 216);
        cairo_rectangle(on.cr, kLeft + 0.5, kTop + 0.5, kRight - kLeft - 1, kBottom - kTop - 1);
        cairo_stroke(on.cr);
        cairo_save(on.cr);
        cairo_translate(on.cr, 8, (kTop + kBottom) / 2);
        cairo_rotate(on.cr, -kPi / 2);
        on.Color(0, 0, 0);
        on.Text("steps", kPlain, 0, 0, 0.5, 0);
        cairo_restore(on.cr);
    }

    bool HasDay() const override { return true; }
    void Draw(const DayData& day) override {
        if (!m_canvas)
            m_canvas = new Canvas(DayData::kWidth, DayData::kHeight);
        Canvas& on = *m_canvas;
        constexpr double kLeft = 44;
        constexpr double kTop = 27;
        constexpr double kRight = 750;
        constexpr double kBottom = 130;
        const auto yOf = [](double level) { return kBottom - level * (kBottom - kTop) / 10; };
        on.Color(255, 255, 255);
        cairo_paint(on.cr);
        cairo_set_line_width(on.cr, 1);
        on.Color(198, 206, 216);
        for (int level = 1; level <= DayData::kLevels; ++level)
            on.Line(kLeft, std::floor(yOf(level)) + 0.5, kRight, std::floor(yOf(level)) + 0.5);
        on.Color(226, 102, 80);
        on.Fill(0, yOf(9.5), 40, yOf(6.5) - yOf(9.5));
        on.Color(250, 214, 140);
        on.Fill(0, yOf(6.5), 40, yOf(3.5) - yOf(6.5));
        on.Color(112, 150, 200);
        on.Fill(0, yOf(3.5), 40, yOf(0.5) - yOf(3.5));
        on.Color(0, 0, 0);
        on.Text("Mar 2", "Inter 14", 0, 12, 0);
        on.Color(206, 84, 30);
        for (const int minute : DayData::kEvents) {
            const double x = kLeft + minute * (kRight - kLeft) / 1440;
            cairo_move_to(on.cr, x, kBottom + 6);
            cairo_line_to(on.cr, x - 7, kBottom + 20);
            cairo_line_to(on.cr, x + 7, kBottom + 20);
            cairo_fill(on.cr);
        }
        for (int hour = 0; hour < 24; ++hour) {
            const double x = std::floor(kLeft + hour * (kRight - kLeft) / 24) + 0.5;
            on.Color(0, 0, 0);
            on.Text(std::to_string(hour), "Inter 12", x, kBottom + 16, 0.5);
            on.Line(x, kBottom - 3, x, kBottom + 4);
        }
        cairo_move_to(on.cr, kLeft, kBottom);
        for (std::size_t i = 0; i < day.intensity.size(); ++i)
            cairo_line_to(on.cr, kLeft + static_cast<double>(i) * (kRight - kLeft) / DayData::kValues,
                          yOf(day.intensity[i]));
        cairo_line_to(on.cr, kRight, kBottom);
        on.Color(96, 140, 190);
        cairo_fill_preserve(on.cr);
        on.Color(198, 206, 216);
        cairo_stroke(on.cr);
        on.Color(0, 0, 0);
        on.Text(day.Summary(), "Inter 12", kLeft + 10, kTop + 14, 0);
        on.Color(198, 206, 216);
        cairo_rectangle(on.cr, kLeft + 0.5, kTop + 0.5, kRight - kLeft - 1, kBottom - kTop - 1);
        cairo_stroke(on.cr);
        DrawLevels(on, day, yOf);
    }

    void Write(const char* path) override { m_canvas->Write(path); }

private:
    template <class YOf> static void DrawLevels(Canvas& on, const DayData& day, YOf yOf) {
        constexpr double kLeft = 780;
        constexpr double kRight = 880;
        for (int level = 1; level <= DayData::kLevels; ++level) {
            const double minutes = day.minutes[static_cast<std::size_t>(level - 1)];
            const double width = std::floor(std::min(minutes, 40.0) * (kRight - kLeft) / 40);
            on.Color(112, 150, 200);
            on.Fill(kLeft, yOf(level + 0.5), width, yOf(level - 0.5) - yOf(level + 0.5));
            on.Color(0, 0, 0);
            char figure[16];
            std::snprintf(figure, sizeof figure, "%.1f", minutes);
            on.Text(figure, "Inter 8", kLeft + width + 3, yOf(level), 0);
            on.Text(std::to_string(level), "Inter 8", kLeft - 3, yOf(level), 1);
        }
        for (const int minutes : {0, 20, 40})
            on.Text(std::to_string(minutes), "Inter 12", kLeft + minutes * (kRight - kLeft) / 40, yOf(0) + 16, 0.5);
        on.Text("Min per level", "Inter 12", kLeft, 12, 0);
        on.Color(198, 206, 216);
        cairo_rectangle(on.cr, kLeft + 0.5, yOf(10) + 0.5, kRight - kLeft - 1, yOf(0) - yOf(10) - 1);
        cairo_stroke(on.cr);
    }

    Canvas* m_canvas = nullptr;
};

} // namespace

int main(int argc, char** argv) {
    Cairo cairo;
    return RunPeer(argc, argv, cairo);
}
