#include "messages.h"

#include "progress.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace melkar::tool {
namespace {

constexpr const char* kRed = "\x1b[1;31m";
constexpr const char* kYellow = "\x1b[1;33m";
constexpr const char* kPlain = "\x1b[0m";

thread_local KeptMessages* t_kept = nullptr;

bool IsColored() {
    const char* off = std::getenv("NO_COLOR");
    return IsOnTerminal() && (off == nullptr || *off == '\0');
}

void Say(const char* color, const std::string& word, const std::string& what) {
    Progress::WriteLine((IsColored() ? color + word + kPlain : word) + " " + what);
}

} // namespace

KeptMessages::KeptMessages() : m_outer(std::exchange(t_kept, this)) {}
KeptMessages::~KeptMessages() { t_kept = m_outer; }

bool IsOnTerminal() {
    const char* terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) != 0 && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

void Warn(const std::string& what) {
    if (t_kept)
        t_kept->messages.push_back({Warn, what});
    else
        Say(kYellow, "melkar: warning:", what);
}

void Complain(const std::string& what) {
    if (t_kept)
        t_kept->messages.push_back({Complain, what});
    else
        Say(kRed, "melkar:", what);
}

} // namespace melkar::tool
