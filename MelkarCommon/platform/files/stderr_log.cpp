#include <MelkarCommon/platform/files/log_sink.h>

#include <cerrno>
#include <cstdio>

namespace melkar {

/// One write a line, so that those of several threads don't mix.
void StandardLogSink(const char* text) {
    const int reason = errno; // of what is told, for the caller who asks next
    std::fprintf(stderr, "%s\n", text);
    errno = reason;
}

} // namespace melkar
