#include <MelkarCommon/platform/files/log_sink.h>

#include <atomic>

namespace melkar {

namespace {
constinit std::atomic<LogSink> g_sink{nullptr}; ///< set while the library is loaded, before any thread draws
} // namespace

void SetLogSink(LogSink sink) { g_sink = sink; }

void Report(const char* text) {
    if (const LogSink sink = g_sink)
        sink(text);
}

} // namespace melkar
