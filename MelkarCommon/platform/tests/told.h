#pragma once

#include <MelkarCommon/platform/files/log_sink.h>

#include <mutex>
#include <string>

/// What the drawing layer tells while the object lives, a line each. One at a time.
class Told {
public:
    Told() {
        s_text.clear();
        m_former = melkar::SetLogSink([](const char* text) {
            const std::lock_guard lock(s_mutex);
            s_text += std::string(text) + "\n";
        });
    }
    ~Told() { melkar::SetLogSink(m_former); }
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;

    std::string Lines() const {
        const std::lock_guard lock(s_mutex);
        return s_text;
    }

private:
    static inline std::string s_text;
    static inline std::mutex s_mutex;

    melkar::LogSink m_former;
};
