#pragma once

#include <csignal>
#include <thread>
#include <utility>

/// @file
/// Internal. Threads that a host doesn't know of.

namespace melkar {

/// A thread on which none of the host's signals is handled.
template <class Work> std::thread StartQuietly(Work work) {
    class NoSignals {
    public:
        NoSignals() {
            sigset_t all;
            sigfillset(&all);
            pthread_sigmask(SIG_SETMASK, &all, &m_former);
        }
        ~NoSignals() { pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }
        NoSignals(const NoSignals&) = delete;
        NoSignals& operator=(const NoSignals&) = delete;

    private:
        sigset_t m_former{};
    } const quiet; // taken over by the thread
    return std::thread(std::move(work));
}

} // namespace melkar
