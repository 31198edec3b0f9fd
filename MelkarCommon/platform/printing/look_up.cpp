#include <MelkarCommon/platform/printing/look_up.h>

#include <algorithm>
#include <cstring>
#include <netdb.h>
#include <vector>

namespace melkar {
namespace {

/// What the resolver of the C library works on, from its own threads.
struct Question {
    Question(std::string name, int port) : host(std::move(name)), service(std::to_string(port)) {
        hints.ai_socktype = SOCK_STREAM;
        hints.ai_flags = AI_NUMERICSERV;
        request.ar_name = host.c_str();
        request.ar_service = service.c_str();
        request.ar_request = &hints;
    }
    ~Question() {
        if (request.ar_result != nullptr)
            freeaddrinfo(request.ar_result);
    }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    std::string host;
    std::string service;
    addrinfo hints{};
    gaicb request{};
};

timespec Until(std::chrono::steady_clock::time_point deadline) {
    using namespace std::chrono;
    const nanoseconds left = std::max(nanoseconds(deadline - steady_clock::now()), nanoseconds(0));
    return {static_cast<time_t>(duration_cast<seconds>(left).count()), static_cast<long>((left % seconds(1)).count())};
}

/// @return whether the question is answered, or will never be
bool Wait(const Question& question, std::chrono::steady_clock::time_point deadline) {
    const gaicb* const requests[] = {&question.request};
    int result = EAI_INTR;
    while (result == EAI_INTR) {
        const timespec left = Until(deadline);
        result = gai_suspend(requests, 1, &left);
    }
    return result != EAI_AGAIN;
}

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
    return Addresses(nodes.empty() ? nullptr : httpAddrCopyList(nodes.data()));
}

} // namespace

Addresses LookUp(const std::string& host, int port, std::chrono::steady_clock::time_point deadline) {
    if (host.starts_with('/'))
        return Addresses(httpAddrGetList(host.c_str(), AF_UNSPEC, nullptr));
    auto question = std::make_unique<Question>(host, port);
    gaicb* requests[] = {&question->request};
    if (getaddrinfo_a(GAI_NOWAIT, requests, 1, nullptr) != 0)
        return nullptr;
    if (!Wait(*question, deadline) && gai_cancel(&question->request) == EAI_NOTCANCELED) {
        (void)question.release(); // the resolver still writes there
        return nullptr;
    }
    return ToAddresses(question->request.ar_result);
}

} // namespace melkar
