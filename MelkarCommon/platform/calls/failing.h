#pragma once

#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <cstddef>
#include <cstdint>

/// @file
/// Internal. How calls fail without memory: what they are made of throws, they themselves never do.

namespace melkar {

/// @return what `call` gives, or `failure` if it throws
template <class Call> auto OrFailure(const Call& call, decltype(call()) failure = {}) noexcept -> decltype(call()) {
    try {
        return call();
    } catch (...) {
        return failure;
    }
}

/// The same for what leaves words where it fails (`LastFailure`), which are gone where it succeeds. @return what `call`
/// gives, `failure` if it throws
template <class Call> auto OrWords(const Call& call, decltype(call()) failure = {}) noexcept -> decltype(call()) {
    try {
        const auto result = call();
        if (result != failure)
            ForgetFailure();
        return result;
    } catch (...) {
        KeepFailure("no memory");
        return failure;
    }
}

/// Runs a call behind the lines that wait. @return what it gives; FALSE, 0 or null if it throws: then nothing of it is
/// drawn, as far as `TakeBack` can help
template <class Call> auto AfterLines(HDC surface, const Call& call) noexcept -> decltype(call()) {
    std::size_t before = SIZE_MAX; // lines that wait leave nothing if they fail
    try {
        surface->FlushLines();
        before = DrawnOn(surface->target);
        return call();
    } catch (...) {
        TakeBack(surface->target, before);
        return {};
    }
}

/// The same for a call that draws by `draw(backend)`; the backend is null without room.
template <class Draw> auto DrawOrFail(HDC surface, const Draw& draw) noexcept {
    return AfterLines(surface, [&] { return draw(DrawingOn(surface->target)); });
}

} // namespace melkar
