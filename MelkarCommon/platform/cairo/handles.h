#pragma once

#include <cairo.h>

#include <memory>

/// @file
/// Internal. Owning handles of cairo's objects.

namespace melkar {

struct CairoRelease {
    void operator()(cairo_t* cr) const { cairo_destroy(cr); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
    void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
};

using CairoContext = std::unique_ptr<cairo_t, CairoRelease>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoRelease>;
using CairoFontOptions = std::unique_ptr<cairo_font_options_t, CairoRelease>;
using ScaledFont = std::unique_ptr<cairo_scaled_font_t, CairoRelease>;

} // namespace melkar
