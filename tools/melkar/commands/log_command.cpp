#include "command.h"
#include "log_reader.h"
#include "messages.h"
#include "options.h"

#include <chrono>
#include <csignal>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace melkar::tool {
namespace {

constexpr auto kBetweenLooks = std::chrono::milliseconds(200);

struct LogOptions {
    std::string file;
    bool follow = false;
};

void AddOptions(CLI::App& app, LogOptions& options) {
    app.add_option("FILE", options.file, "The log, which processes may be writing")->required()->type_name("FILE");
    app.add_flag("-f,--follow", options.follow,
                 "Go on with the lines to come, until the pipe is closed or a key ends it");
    app.footer(Examples({"melkar log samples/app/log/graph.log", "melkar log samples/app/log/graph.log | tail -n 5"}));
}

/// Lines for the standard output. Whoever closed the pipe has seen enough.
class Printed {
public:
    void Add(const std::string& line) { m_text += line + "\n"; }
    /// @return false once nobody reads
    bool Flush() {
        std::size_t done = 0;
        while (m_isRead && done < m_text.size()) {
            const ssize_t count = write(STDOUT_FILENO, m_text.data() + done, m_text.size() - done);
            done += count > 0 ? static_cast<std::size_t>(count) : 0;
            m_isRead = count > 0 || (count < 0 && errno == EINTR);
        }
        m_text.clear();
        return m_isRead;
    }
    /// Waits for the next look. @return false once nobody reads
    bool Wait() const {
        pollfd out{STDOUT_FILENO, 0, 0};
        return poll(&out, 1, static_cast<int>(kBetweenLooks.count())) == 0;
    }

private:
    std::string m_text;
    bool m_isRead = true;
};

int RunLog(const LogOptions& options) {
    std::signal(SIGPIPE, SIG_IGN);
    Printed printed;
    LogReader log(
        options.file, [&](const std::string& line) { printed.Add(line); }, Complain);
    bool isThere = log.Read();
    if (!options.follow)
        log.Finish();
    const bool isRead = printed.Flush();
    if (!isThere || !isRead || !options.follow)
        return isThere ? kDone : kFailed;
    while (printed.Wait() && printed.Flush())
        if (!log.Read())
            return kFailed;
    return kDone;
}

} // namespace

Run AddLog(CLI::App& app) { return WithOptions(app, AddOptions, RunLog); }

} // namespace melkar::tool
