#include <MelkarCommon/platform/printing/look_up.h>
#include <MelkarCommon/platform/printing/quiet_thread.h>

#include <cstring>
#include <future>
#include <netdb.h>
#include <vector>

namespace melkar {
namespace {

/// As CUPS has them, in the order of the resolver.
Addresses ToAddresses(const addrinfo* found) {
    std::vector<http_addrlist_t> nodes;
    for (const addrinfo* address = found; address != nullptr; address = address->ai_next) {
        if (address->ai_addrlen > sizeof(http_addr_t))
            continue;
        nodes.emplace_back();
        std::memcpy(&nodes.back().addr, address->ai_addr, address->ai_addrlen);
    }
    for (std::size_t i = 1; i < nodes.size(); ++i)
        nodes[i - 1].next = &nodes[i];
    return Addresses(nodes.empty() ? nullptr : Cups().httpAddrCopyList(nodes.data()));
}

/// Takes as long as the resolver likes.
Addresses Resolve(const std::string& host, const std::string& service) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.c_str(), service.c_str(), &hints, &found) != 0)
        return nullptr;
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> release(found, freeaddrinfo);
    return ToAddresses(found);
}

} // namespace

Addresses LookUp(const std::string& host, int port, std::chrono::steady_clock::time_point deadline) {
    if (host.starts_with('/'))
        return Addresses(Cups().httpAddrGetList(host.c_str(), AF_UNSPEC, nullptr));
    std::packaged_task<Addresses()> ask([host, service = std::to_string(port)] { return Resolve(host, service); });
    std::future<Addresses> answer = ask.get_future();
    StartQuietly(std::move(ask)).detach(); // it may still be asking when nobody waits any longer
    return answer.wait_until(deadline) == std::future_status::ready ? answer.get() : nullptr;
}

} // namespace melkar
