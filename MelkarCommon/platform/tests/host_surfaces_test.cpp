// Surfaces on what a host has: it gets its own back as it was.

#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/page_words.h>

#include <cairo-pdf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace melkar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// What can be set on a context, as numbers.
std::vector<double> StateOf(cairo_t* cr) {
    std::vector<double> state(10);
    cairo_matrix_t m;
    cairo_get_matrix(cr, &m);
    cairo_clip_extents(cr, &state[0], &state[1], &state[2], &state[3]);
    cairo_get_dash(cr, &state[4], &state[5]);
    cairo_pattern_get_rgba(cairo_get_source(cr), &state[6], &state[7], &state[8], &state[9]);
    cairo_path_t* path = cairo_copy_path(cr);
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        state.push_back(path->data[i].header.type);
        for (int k = 1; k < path->data[i].header.length; ++k)
            state.insert(state.end(), {path->data[i + k].point.x, path->data[i + k].point.y});
    }
    cairo_path_destroy(path);
    state.insert(state.end(), {m.xx, m.yx, m.xy, m.yy, m.x0, m.y0, cairo_get_line_width(cr), cairo_get_tolerance(cr),
                               cairo_get_miter_limit(cr)});
    for (const int kind : {static_cast<int>(cairo_get_operator(cr)), static_cast<int>(cairo_get_line_cap(cr)),
                           static_cast<int>(cairo_get_line_join(cr)), static_cast<int>(cairo_get_fill_rule(cr)),
                           static_cast<int>(cairo_get_antialias(cr))})
        state.push_back(kind);
    return state;
}

/// Leaves nothing as a new context has it. Units are twice as large, the clip is 80 x 60 of them.
void Unsettle(cairo_t* cr) {
    const double dash = 7;
    cairo_scale(cr, 2, 2);
    cairo_translate(cr, 5, 5);
    cairo_rectangle(cr, 0, 0, 80, 60);
    cairo_clip(cr);
    cairo_set_source_rgba(cr, 0.25, 0.5, 0.75, 0.5);
    cairo_set_dash(cr, &dash, 1, 3);
    cairo_set_line_width(cr, 4);
    cairo_set_tolerance(cr, 3);
    cairo_set_miter_limit(cr, 1);
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_SQUARE);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_BEVEL);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
    cairo_select_font_face(cr, "serif", CAIRO_FONT_SLANT_ITALIC, CAIRO_FONT_WEIGHT_BOLD);
    cairo_curve_to(cr, 1, 2, 3, 4, 50, 6);
    cairo_line_to(cr, 7, 8);
    cairo_move_to(cr, 9, 10);
}

TEST(ContextSurface, LeavesTheContextAsItWas) {
    const TempWorkdir work;
    const CairoSurface pdf(cairo_pdf_surface_create("page.pdf", 200, 200));
    const CairoContext cr(cairo_create(pdf.get()));
    Unsettle(cr.get());
    const std::vector<double> before = StateOf(cr.get());
    cairo_font_face_t* face = cairo_get_font_face(cr.get());
    const std::size_t alive = LiveObjectCount();
    const HDC page = CreateContextSurface(cr.get(), 100, 40, 72);
    EXPECT_EQ(GetDeviceCaps(page, HORZRES) * 1000 + GetDeviceCaps(page, LOGPIXELSX), 100072);
    {
        const ScopedPen pen(page, PS_DASH, 3, RGB(200, 0, 0));
        const ScopedBrush brush(page, RGB(0, 0, 200));
        Rectangle(page, -10, -10, 300, 300); // beyond clip and size
        Ellipse(page, 1, 1, 20, 15);
        TextOutA(page, 5, 20, "Found", -1);
        LineTo(page, 30, 30); // waits
    }
    EXPECT_TRUE(DeleteDC(page));
    EXPECT_EQ(StateOf(cr.get()), before);
    EXPECT_EQ(cairo_get_font_face(cr.get()), face);
    EXPECT_EQ(cairo_get_reference_count(cr.get()), 1U);
    EXPECT_EQ(LiveObjectCount(), alive);
    cairo_surface_finish(pdf.get());
    ASSERT_EQ(std::system("pdftotext page.pdf text && pdftoppm -singlefile -r 72 -gray page.pdf shown"), 0);
    EXPECT_THAT(work.Read("bin/text"), HasSubstr("Found")) << "a text, not its picture";
    const std::string shown = work.Read("bin/shown.pgm"); // the last 40000 bytes are its pixels
    std::vector<bool> isInked;
    for (const auto& [x, y] : {POINT{8, 80}, {12, 80}, {168, 80}, {172, 80}, {100, 88}, {100, 92}})
        isInked.push_back(static_cast<unsigned char>(shown.at(shown.size() - 40000 + 200UL * y + x)) < 99);
    EXPECT_THAT(isInked, ElementsAre(false, true, true, false, true, false))
        << "from its corner at (10, 10) to the host's clip at the right, to its own height below";
}

TEST(ContextSurface, FailsWhereTheContextHas) {
    const CairoSurface image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 9, 9));
    const CairoContext cr(cairo_create(image.get()));
    const CairoContext failed(cairo_create(nullptr));
    EXPECT_EQ(CreateContextSurface(nullptr, 9, 9), nullptr);
    EXPECT_EQ(CreateContextSurface(failed.get(), 9, 9), nullptr);
    EXPECT_EQ(CreateContextSurface(cr.get(), 0, 9), nullptr);
    EXPECT_EQ(CreateContextSurface(cr.get(), 9, 9, 0), nullptr);
    const HDC page = CreateContextSurface(cr.get(), 9, 9);
    cairo_set_source_surface(cr.get(), cairo_get_group_target(failed.get()), 0, 0); // fails
    EXPECT_FALSE(DeleteDC(page));
}

/// Some hundred kilobytes, with a title in front that is known last.
void DrawMuch(HDC page) {
    for (int i = 0; i < 9000; ++i)
        Ellipse(page, i % 300, i / 30, i % 300 + 9, i / 30 + 7);
    SetPageWords(page, {"Much", "", "", {}});
}

TEST(PageInMemory, HasTheBytesOfItsFile) {
    const TempWorkdir work;
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
    for (const PageFormat format : {PageFormat::Pdf, PageFormat::Svg}) {
        std::string bytes = "former";
        const HDC file = CreatePageSurface("page", format, 300, 300, 96);
        const HDC kept = CreatePageInMemory(bytes, format, 300, 300, 96);
        DrawMuch(file);
        DrawMuch(kept);
        EXPECT_EQ(bytes, "former");
        EXPECT_TRUE(DeleteDC(file) && DeleteDC(kept));
        EXPECT_TRUE(bytes == work.Read("bin/page")) << bytes.size();
    }
    unsetenv("SOURCE_DATE_EPOCH");
}

TEST(PageInMemory, EndsWhereItsTakerDoes) {
    const std::pair<const char*, PieceTaker> cases[] = {
        {"has enough", [](std::string_view) { return false; }},
        {"throws", [](std::string_view) -> bool { throw std::runtime_error("full"); }},
    };
    for (const auto& [what, last] : cases) {
        std::vector<std::size_t> pieces;
        const HDC page = CreatePageFor(
            [&, &last = last](std::string_view piece) {
                pieces.push_back(piece.size());
                return pieces.size() < 2 || last(piece);
            },
            PageFormat::Svg, 300, 300, 96);
        DrawMuch(page);
        EXPECT_FALSE(DeleteDC(page)) << what;
        EXPECT_EQ(errno, ECANCELED) << what;
        EXPECT_THAT(pieces, ElementsAre(65536, 65536)) << what;
    }
    EXPECT_EQ(CreatePageFor(nullptr, PageFormat::Svg, 300, 300, 96), nullptr);
}

} // namespace
} // namespace melkar
