#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/pages/cairo_page.h>

#include <cerrno>

/// @file
/// A page on a context of the host's, which gets it back as it was.

namespace melkar {

namespace {

struct PathRelease {
    void operator()(cairo_path_t* path) const { cairo_path_destroy(path); }
};
using CairoPath = std::unique_ptr<cairo_path_t, PathRelease>;

/// With the state of a new context, but for matrix and clip, until it is restored.
CairoContext Borrow(cairo_t* cr) {
    cairo_save(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_DEFAULT);
    cairo_set_tolerance(cr, 0.1);
    cairo_set_miter_limit(cr, 10);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    return CairoContext(cairo_reference(cr));
}

class ContextPage final : public CairoPage {
public:
    /// @param path the context's own, which no saved state holds
    ContextPage(cairo_t* context, CairoPath path, const RECT& room, int dpi)
        : CairoPage(Borrow(context), room, dpi), m_path(std::move(path)) {}
    ~ContextPage() override {
        GiveBack();
        cairo_restore(Context());
        cairo_new_path(Context());
        cairo_append_path(Context(), m_path.get());
    }

    bool BeginPage() override {
        OpenRoom();
        return true;
    }
    void EndPage() override { CloseRoom(); }
    bool Finish() override {
        CloseRoom();
        const cairo_status_t status = cairo_status(Context());
        if (status != CAIRO_STATUS_SUCCESS)
            ReportFailure((std::string("not drawn on the host's context: ") + cairo_status_to_string(status)).c_str());
        errno = status != CAIRO_STATUS_SUCCESS ? EIO : errno;
        return status == CAIRO_STATUS_SUCCESS && !m_isAbandoned;
    }
    void Abandon() override {
        m_isAbandoned = true;
        LeaveRoom();
    }

private:
    CairoPath m_path;
    bool m_isAbandoned = false;
};

} // namespace

std::unique_ptr<PageFile> MakeContextPage(cairo_t* context, int width, int height, int dpi) {
    CairoPath path(context != nullptr ? cairo_copy_path(context) : nullptr);
    if (path == nullptr || cairo_status(context) != CAIRO_STATUS_SUCCESS || path->status != CAIRO_STATUS_SUCCESS) {
        KeepFailure("no context to draw on, or one that has failed");
        return nullptr;
    }
    return std::make_unique<ContextPage>(context, std::move(path), RECT{0, 0, width, height}, dpi);
}

} // namespace melkar
