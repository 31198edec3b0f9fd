#include <MelkarCommon/platform/files/log_sink.h>

#include <atomic>

namespace melkar {

namespace {
constinit std::atomic<LogSink> g_sink{StandardLogSink};
} // namespace

LogSink SetLogSink(LogSink sink) { return g_sink.exchange(sink); }

void Report(const char* text) {
    if (const LogSink sink = g_sink)
        sink(text);
}

} // namespace melkar
