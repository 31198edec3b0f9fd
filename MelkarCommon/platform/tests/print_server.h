#pragma once

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cups/cups.h>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

/// A socket at a free port of the loopback.
struct LoopbackSocket {
    LoopbackSocket() {
        sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
        socklen_t size = sizeof address;
        bind(socket, reinterpret_cast<sockaddr*>(&address), size);
        getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
    }
    ~LoopbackSocket() { close(socket); }
    LoopbackSocket(const LoopbackSocket&) = delete;
    LoopbackSocket& operator=(const LoopbackSocket&) = delete;

    int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    int port = 0;
};

/// A print server of its own on the loopback, with the queue "Test" that prints to a file; it keeps what it was sent.
/// The queue's own paper is Letter; A4 comes without borders and, behind that, with half an inch at the sides, three
/// quarters below and one inch above. Gone with the object, and with the process at the latest. Calls of this thread
/// that name a queue are led to it.
class PrintServer {
public:
    /// @param root an absolute directory for all that the server writes @param policy lines in front of what allows all
    explicit PrintServer(const std::filesystem::path& root, const std::string& policy = "")
        : m_root(root), m_port(LoopbackSocket().port) {
        WriteFiles(policy);
        const std::string conf = m_root / "cupsd.conf";
        const std::string files = m_root / "cups-files.conf";
        m_process = fork();
        if (m_process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            execl("/usr/sbin/cupsd", "cupsd", "-f", "-c", conf.c_str(), "-s", files.c_str(), nullptr);
            _exit(127);
        }
        WaitUntilItAnswers();
        const std::string add = "cd " + m_root.string() + R"( && sed 's|Area A4/.*|Area A4/A4: "0 0 595 842"|
            s|Area A4.Full.*|Area A4.Fullbleed/A4: "36 54 559 770"|' )" +
                                "/usr/share/ppd/cupsfilters/Generic-PDF_Printer-PDF.ppd" + " > ppd && lpadmin -h " +
                                Host() + " -p Test -E -v file:$PWD/printed -P ppd 2>/dev/null";
        if (std::system(add.c_str()) != 0) {
            Stop();
            throw std::runtime_error("no queue");
        }
        cupsSetServer(Host().c_str());
    }
    ~PrintServer() {
        Stop();
        cupsSetServer(nullptr);
    }
    PrintServer(const PrintServer&) = delete;
    PrintServer& operator=(const PrintServer&) = delete;

    std::string Address(const char* scheme = "ipp") const {
        return std::string(scheme) + "://" + Host() + "/printers/Test";
    }
    std::string Socket() const { return m_root / "socket"; }
    std::filesystem::path Spool() const { return m_root / "spool"; }

    void Stop() {
        if (m_process <= 0)
            return;
        kill(m_process, SIGTERM);
        for (int i = 0; i < 100 && waitpid(m_process, nullptr, WNOHANG) == 0; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        kill(m_process,
             SIGKILL); // reaped already, as a rule: nobody else has its number until this process forks again
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

    /// What the server tells of a job, as text; empty if it has no such job.
    std::string JobAttribute(int job, const char* name) const {
        http_t* server = Connect();
        ipp_t* request = ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES);
        const std::string uri = "ipp://localhost/jobs/" + std::to_string(job);
        ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr, uri.c_str());
        ipp_t* answer = cupsDoRequest(server, request, "/jobs");
        std::string text(256, '\0');
        ipp_attribute_t* found = ippFindAttribute(answer, name, IPP_TAG_ZERO);
        text.resize(found != nullptr ? ippAttributeString(found, text.data(), text.size()) : 0);
        ippDelete(answer);
        httpClose(server);
        return text;
    }

private:
    /// @return null if nobody answers within two seconds
    http_t* Connect() const {
        return httpConnect2("127.0.0.1", m_port, nullptr, AF_UNSPEC, HTTP_ENCRYPTION_IF_REQUESTED, 1, 2000, nullptr);
    }
    std::string Host() const { return "127.0.0.1:" + std::to_string(m_port); }

    /// The server's children are of another user and have to get in.
    void WriteFiles(const std::string& policy) const {
        namespace fs = std::filesystem;
        constexpr auto kOpen = static_cast<fs::perms>(0755);
        std::string folders;
        for (const char* name : {"ServerRoot", "RequestRoot", "CacheDir", "StateDir", "TempDir", "ServerKeychain"}) {
            const fs::path folder = m_root / (std::string(name) == "RequestRoot" ? "spool" : name);
            fs::create_directories(folder);
            folders += std::string(name) + " " + folder.string() + "\n";
        }
        fs::permissions(m_root, kOpen);
        for (const char* log : {"AccessLog", "ErrorLog", "PageLog"})
            folders += std::string(log) + " " + (m_root / log).string() + "\n";
        std::ofstream(m_root / "cups-files.conf") << "User lp\nGroup lp\nFileDevice Yes\n" << folders;
        std::ofstream(m_root / "cupsd.conf")
            << "Listen " << Host() << "\nListen " << Socket()
            << "\nDefaultAuthType None\nPreserveJobFiles Yes\nBrowsing Off\n"
            << "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
            << "<Location /admin>\nOrder allow,deny\nAllow all\n</Location>\n"
            << "<Policy default>\nJobPrivateAccess all\nJobPrivateValues none\n"
            << policy << "<Limit All>\nOrder deny,allow\nAllow all\n</Limit>\n</Policy>\n";
    }

    void WaitUntilItAnswers() {
        for (int i = 0; i < 250; ++i) {
            if (http_t* server = Connect())
                return httpClose(server);
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        Stop();
        throw std::runtime_error("no print server");
    }

    std::filesystem::path m_root;
    int m_port;
    pid_t m_process = 0;
};
