#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

/// @file
/// What is going on, for somebody who waits.

namespace melkar::tool {

/// From its second second on one line of the terminal tells what is going on, several times a second, until the object
/// goes. Where messages don't stand on a terminal it does nothing.
class Progress {
public:
    using Text = std::function<std::string()>;

    explicit Progress(Text text); ///< is asked on a thread of its own; none: nothing is told
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    static void WriteLine(const std::string& line); ///< on the error stream, in the place of what is told

private:
    void Show();

    Text m_text;
    std::mutex m_mutex;
    std::condition_variable m_over;
    bool m_isOver = false;
    std::thread m_thread; ///< starts last
};

} // namespace melkar::tool
