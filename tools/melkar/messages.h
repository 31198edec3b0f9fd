#pragma once

#include <string>
#include <vector>

/// @file
/// What is said on the error stream: "melkar: ..." a line. On a terminal the first word is coloured, unless the
/// environment has a NO_COLOR that isn't empty, or a TERM that is dumb.

namespace melkar::tool {

void Warn(const std::string& what);
void Complain(const std::string& what);

/// While it lives, what this thread says is kept, for who says it later and tells what it is about.
class KeptMessages {
public:
    struct Message {
        void (*say)(const std::string& what); ///< `Warn` or `Complain`
        std::string what;
    };

    KeptMessages();
    ~KeptMessages();
    KeptMessages(const KeptMessages&) = delete;
    KeptMessages& operator=(const KeptMessages&) = delete;

    std::vector<Message> messages;

private:
    KeptMessages* m_outer;
};

/// Whether what is said stands on a terminal that can erase a line.
bool IsOnTerminal();

} // namespace melkar::tool
