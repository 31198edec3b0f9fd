#include "progress.h"

#include "messages.h"

#include <chrono>
#include <iostream>
#include <utility>

namespace melkar::tool {
namespace {

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kPace = std::chrono::milliseconds(250);

std::mutex g_stream;
bool g_isShown = false; ///< the line is there

/// With the stream locked.
void Erase() {
    if (std::exchange(g_isShown, false))
        std::cerr << "\r\x1b[K";
}

} // namespace

Progress::Progress(Text text) : m_text(std::move(text)) {
    if (m_text && IsOnTerminal())
        m_thread = std::thread([this] { Show(); });
}

Progress::~Progress() {
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_over.notify_one();
    m_thread.join();
    const std::lock_guard lock(g_stream);
    Erase();
}

void Progress::WriteLine(const std::string& line) {
    const std::lock_guard lock(g_stream);
    Erase();
    std::cerr << line + "\n";
}

void Progress::Show() {
    std::unique_lock lock(m_mutex);
    for (auto pause = std::chrono::milliseconds(kPatience); !m_over.wait_for(lock, pause, [this] { return m_isOver; });
         pause = kPace) {
        const std::lock_guard stream(g_stream);
        std::cerr << "\r\x1b[Kmelkar: " + m_text() + " ..." << std::flush;
        g_isShown = true;
    }
}

} // namespace melkar::tool
