#include <MelkarCommon/platform/printing/ipp_exchange.h>

#include <MelkarCommon/platform/printing/look_up.h>
#include <MelkarCommon/platform/printing/quiet_thread.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <future>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace melkar {
namespace {

/// Ends an exchange.
struct Failure {
    std::string reason;
};

struct CloseHttp {
    void operator()(http_t* server) const { Cups().httpClose(server); }
};
using Connection = std::unique_ptr<http_t, CloseHttp>;

int MillisecondsUntil(Clock::time_point deadline) {
    using std::chrono::milliseconds;
    return static_cast<int>(
        std::max(std::chrono::ceil<milliseconds>(deadline - Clock::now()), milliseconds(1)).count());
}

/// What goes on between this process and a server, on a thread of its own: each call of CUPS waits as long as the
/// server sends anything at all.
class Talk {
public:
    Talk(http_t* server, const Address& address, std::string request, int document, Clock::time_point deadline,
         std::size_t mostBytes)
        : m_server(server), m_address(address), m_request(std::move(request)), m_document(document),
          m_deadline(deadline), m_mostBytes(mostBytes) {}

    /// The bytes of the answer.
    std::string Run() {
        Connect();
        int status = Post();
        if (status == HTTP_STATUS_UNAUTHORIZED && CanAuthenticate()) {
            Connect();
            status = Post();
        }
        if (status != HTTP_STATUS_OK)
            throw Failure{RefusalOf(status)};
        return ReadAnswer();
    }

    /// By another thread, over and over until `Run` ends: what waits for the server then finds the connection at its
    /// end. The socket stays open as long as the connection is there, but for a handshake that fails.
    void Cut() {
        std::atomic_ref(m_cancel).store(1);
        if (const int socket = Cups().httpGetFd(m_server); socket >= 0)
            shutdown(socket, SHUT_RDWR);
    }

private:
    void Connect() {
        if (Cups().httpReconnect2(m_server, MillisecondsUntil(m_deadline), &m_cancel) != 0)
            throw Failure{"no print server at " + m_address.host + ":" + std::to_string(m_address.port) + ": " +
                          WhyNot()};
    }

    /// CUPS has no words for a connection that was given up.
    static std::string WhyNot() {
        const char* words = Cups().cupsLastErrorString();
        return words != nullptr ? words : "no connection";
    }

    /// Sends the request. @return what the server says to it: a number of its own choice, mostly an `HTTP_STATUS_...`
    int Post() {
        const char* resource = m_address.resource.c_str();
        Cups().httpClearFields(m_server);
        Cups().httpSetField(m_server, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
        if (const char* credentials = Cups().httpGetAuthString(m_server))
            Cups().httpSetField(m_server, HTTP_FIELD_AUTHORIZATION, credentials);
        Cups().httpSetLength(m_server, m_request.size() + DocumentSize());
        if (m_document >= 0)
            Cups().httpSetExpect(m_server, HTTP_STATUS_CONTINUE); // a refusal comes before the document goes
        if (Cups().httpPost(m_server, resource) != 0)
            throw Lost();
        Write(m_request.data(), m_request.size());
        if (m_document >= 0)
            if (const int early = SendDocument(); early != HTTP_STATUS_CONTINUE)
                return early;
        int status = HTTP_STATUS_CONTINUE;
        while (status == HTTP_STATUS_CONTINUE)
            status = NextStatus();
        return status;
    }

    std::size_t DocumentSize() const {
        struct stat status {};
        return m_document >= 0 && fstat(m_document, &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
    }

    /// @return what the server says meanwhile, HTTP_STATUS_CONTINUE if that is nothing of interest
    int SendDocument() {
        constexpr int kPatience = 1000; // milliseconds; many servers don't say that they wait for it
        std::array<char, 65536> block{};
        lseek(m_document, 0, SEEK_SET);
        for (int patience = kPatience;; patience = 0) {
            if (Cups().httpWait(m_server, std::min(patience, MillisecondsUntil(m_deadline))) != 0)
                if (const int status = NextStatus(); status != HTTP_STATUS_CONTINUE)
                    return status;
            const ssize_t count = read(m_document, block.data(), block.size());
            if (count < 0)
                throw Failure{std::strerror(errno)};
            if (count == 0)
                return HTTP_STATUS_CONTINUE;
            Write(block.data(), static_cast<std::size_t>(count));
        }
    }

    void Write(const char* bytes, std::size_t count) {
        while (count > 0) {
            const ssize_t written = Cups().httpWrite2(m_server, bytes, count);
            if (written <= 0)
                throw Lost();
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
        if (Cups().httpFlushWrite(m_server) < 0)
            throw Lost();
    }

    int NextStatus() {
        constexpr int kMostInterim = 100;
        const int status = Cups().httpUpdate(m_server);
        if (status == HTTP_STATUS_ERROR)
            throw Lost();
        if (status == HTTP_STATUS_CONTINUE && ++m_interim > kMostInterim)
            throw Failure{"the server says nothing but that it goes on"};
        return status;
    }

    std::string ReadAnswer() {
        std::array<char, 16384> block{};
        std::string answer;
        while (Cups().httpGetState(m_server) != HTTP_STATE_WAITING) {
            const ssize_t count = Cups().httpRead2(m_server, block.data(), block.size());
            if (count < 0)
                throw Lost();
            if (count == 0)
                break;
            answer.append(block.data(), static_cast<std::size_t>(count));
            if (answer.size() > m_mostBytes)
                throw Failure{"the server's answer has more than " + std::to_string(m_mostBytes) + " bytes"};
        }
        return answer;
    }

    /// A server of this machine believes the system who we are. Nobody is asked for a password.
    bool CanAuthenticate() {
        const auto refuse = [](const char*, http_t*, const char*, const char*, void*) noexcept -> const char* {
            return nullptr;
        };
        Cups().cupsSetPasswordCB2(refuse, nullptr); // of this thread, which is about to end
        return Cups().httpAddrFamily(Cups().httpGetAddress(m_server)) == AF_LOCAL &&
               Cups().cupsDoAuthentication(m_server, "POST", m_address.resource.c_str()) == 0;
    }

    static std::string RefusalOf(int status) {
        constexpr int kEnd = 600; // of those with a meaning
        if (status >= HTTP_STATUS_MULTIPLE_CHOICES && status < HTTP_STATUS_BAD_REQUEST)
            return "the server redirects, which isn't followed";
        if (status == HTTP_STATUS_UNAUTHORIZED)
            return "the server wants a password";
        if (status == HTTP_STATUS_UPGRADE_REQUIRED)
            return "the server wants encryption, as addresses that begin with ipps:// have it";
        return "the server says " + std::to_string(status) +
               (status < kEnd ? std::string(" ") + Cups().httpStatus(static_cast<http_status_t>(status)) : "");
    }

    Failure Lost() const {
        const int error = Cups().httpError(m_server);
        return {error != 0 ? std::strerror(error) : "the connection was lost"};
    }

    http_t* m_server;
    const Address& m_address;
    std::string m_request;
    int m_document;
    Clock::time_point m_deadline;
    std::size_t m_mostBytes;
    int m_interim = 0;
    int m_cancel = 0; ///< CUPS looks at it while it connects
};

/// CUPS keeps a copy of the addresses.
Connection Prepare(const Address& address, Clock::time_point deadline) {
    constexpr int kBlocking = 1;
    constexpr int kNotYet = 0;
    const Addresses addresses = LookUp(address.host, address.port, deadline);
    if (addresses == nullptr)
        return nullptr;
    return Connection(Cups().httpConnect2(address.host.c_str(), address.port, addresses.get(), AF_UNSPEC,
                                          address.encryption, kBlocking, kNotYet, nullptr));
}

/// The bytes of the answer.
std::string RunUntil(Clock::time_point deadline, Talk& talk) {
    constexpr std::chrono::milliseconds kNudge{10};
    std::packaged_task<std::string()> run([&talk] { return talk.Run(); });
    std::future<std::string> answer = run.get_future();
    std::thread thread = StartQuietly(std::move(run));
    const bool isLate = answer.wait_until(deadline) == std::future_status::timeout;
    while (isLate && answer.wait_for(kNudge) == std::future_status::timeout)
        talk.Cut();
    thread.join();
    if (isLate)
        throw Failure{"the server took too long"};
    return answer.get();
}

} // namespace

IppAnswer Exchange(const Address& address, const Message& request, int document, Clock::time_point deadline,
                   std::size_t mostBytes) try {
    const std::string bytes = BytesOf(request);
    if (bytes.empty())
        return {nullptr, "the request can't be put into bytes"};
    const Connection server = Prepare(address, deadline);
    if (server == nullptr)
        return {nullptr, "no machine is named " + address.host};
    Talk talk(server.get(), address, bytes, document, deadline, mostBytes);
    Message answer = MessageOf(RunUntil(deadline, talk));
    return answer != nullptr ? IppAnswer{std::move(answer), ""}
                             : IppAnswer{nullptr, "the server's answer is no whole message"};
} catch (const Failure& failure) {
    return {nullptr, failure.reason};
} catch (const std::exception& error) {
    return {nullptr, error.what()}; // no memory, no thread
}

} // namespace melkar
