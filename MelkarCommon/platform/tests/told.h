#pragma once

#include <MelkarCommon/platform/files/log_sink.h>

#include <mutex>
#include <string>

/// What the drawing layer tells while the object lives, a line each. One at a time.
class Told {
public:
    Told() {
        Text().clear();
        m_former = melkar::SetLogSink([](const char* text) {
            const std::lock_guard lock(Mutex());
            Text() += std::string(text) + "\n";
        });
    }
    ~Told() { melkar::SetLogSink(m_former); }
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;

    std::string Lines() const {
        const std::lock_guard lock(Mutex());
        return Text();
    }

private:
    static std::string& Text() {
        static std::string text;
        return text;
    }
    static std::mutex& Mutex() {
        static std::mutex mutex;
        return mutex;
    }

    melkar::LogSink m_former;
};
