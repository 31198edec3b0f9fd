#include "messages.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <unistd.h>

namespace melkar::tool {
namespace {

constexpr const char* kRed = "\x1b[1;31m";
constexpr const char* kYellow = "\x1b[1;33m";
constexpr const char* kPlain = "\x1b[0m";

bool IsColored() {
    const char* off = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) != 0 && (off == nullptr || *off == '\0') && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0;
}

void Say(const char* color, const std::string& word, const std::string& what) {
    std::cerr << (IsColored() ? color + word + kPlain : word) << ' ' << what << '\n';
}

} // namespace

void Warn(const std::string& what) { Say(kYellow, "melkar: warning:", what); }
void Complain(const std::string& what) { Say(kRed, "melkar:", what); }

} // namespace melkar::tool
