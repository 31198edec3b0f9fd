#include <MelkarCommon/platform/printing/ipp_message.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace melkar {
namespace {

ssize_t Append(void* bytes, ipp_uchar_t* from, std::size_t count) noexcept try {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(from), count);
    return static_cast<ssize_t>(count);
} catch (...) {
    return -1; // no memory
}

std::uintptr_t StackPosition() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }

struct Source {
    std::string_view left;
    std::uintptr_t stack; ///< where reading began
};

/// CUPS reads a collection within a collection by a call within a call, as deep as a server likes: some hundred
/// kilobytes of them would end the process. So reading ends where a sensible message never gets to.
ssize_t Take(void* from, ipp_uchar_t* to, std::size_t count) noexcept {
    constexpr std::uintptr_t kMostStack = std::uintptr_t{128} << 10;
    auto& [left, start] = *static_cast<Source*>(from);
    const std::uintptr_t here = StackPosition();
    if (std::max(here, start) - std::min(here, start) > kMostStack)
        return -1;
    count = std::min(count, left.size());
    std::memcpy(to, left.data(), count);
    left.remove_prefix(count);
    return static_cast<ssize_t>(count);
}

} // namespace

std::string BytesOf(const Message& message) {
    constexpr int kBlocking = 1;
    std::string bytes;
    ipp_state_t state = IPP_STATE_IDLE;
    while (state != IPP_STATE_DATA && state != IPP_STATE_ERROR)
        state = Cups().ippWriteIO(&bytes, Append, kBlocking, nullptr, message.get());
    return state == IPP_STATE_DATA ? bytes : std::string();
}

Message MessageOf(std::string_view bytes) {
    constexpr int kBlocking = 1;
    Message message(Cups().ippNew());
    Source source{bytes, StackPosition()};
    return Cups().ippReadIO(&source, Take, kBlocking, nullptr, message.get()) == IPP_STATE_DATA ? std::move(message)
                                                                                                : nullptr;
}

} // namespace melkar
