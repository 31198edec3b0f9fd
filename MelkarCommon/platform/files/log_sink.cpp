#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/last_failure.h>

#include <algorithm>
#include <atomic>
#include <cstring>

namespace melkar {

namespace {
constinit std::atomic<LogSink> g_sink{StandardLogSink};
constinit thread_local char t_failure[512] =
    ""; ///< without an owner: it is asked while a thread ends, and without memory
} // namespace

LogSink SetLogSink(LogSink sink) { return g_sink.exchange(sink); }

void Report(const char* text) {
    if (const LogSink sink = g_sink)
        sink(text);
}

void ReportFailure(const char* text) {
    KeepFailure(text);
    Report(text);
}

void KeepFailure(const char* text) {
    std::size_t length = std::min(std::strlen(text), sizeof t_failure - 1);
    if (text[length] != '\0')
        while (length > 0 && (text[length] & 0xC0) == 0x80) // no half character
            --length;
    std::memcpy(t_failure, text, length);
    t_failure[length] = '\0';
}

void ForgetFailure() { t_failure[0] = '\0'; }

const char* LastFailure() { return t_failure; }

} // namespace melkar
