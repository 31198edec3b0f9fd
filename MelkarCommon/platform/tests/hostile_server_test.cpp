#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/tests/hostile_server.h>
#include <MelkarCommon/platform/tests/told.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace melkar {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using Serve = std::function<void(HostileTalk&, int)>;

/// A clock's mercy on a busy machine; each of these servers held its client for a minute and more, most for ever.
constexpr auto kAtOnce = 8s;
constexpr IppLimits kShort{600ms, 1500ms, 200ms, std::size_t{2} << 20};
/// Where what the server says ends it, no clock of a busy machine may come first.
constexpr IppLimits kPatient{20s, 40s, 1s, std::size_t{2} << 20};

const IppLimits& LimitsOf(const char* words) {
    return words != nullptr && std::string_view(words) == "too long" ? kShort : kPatient;
}

const std::string kContinue = "HTTP/1.1 100 Continue\r\n\r\n";

/// Sends `start` and, over and over, `rest`.
Serve Endless(const std::string& start, const std::string& rest, std::chrono::milliseconds pause = 0ms) {
    return [=](HostileTalk& talk, int) {
        if (talk.Send(start))
            talk.SendForEver(rest, pause);
    };
}

Serve Says(const std::string& words) {
    return [=](HostileTalk& talk, int) { talk.Send(words); };
}

Serve Answers(const std::string& message) {
    return [=](HostileTalk& talk, int) { talk.Answer(message); };
}

Serve Redirect(const std::string& to) { return Says("HTTP/1.1 302 Found\r\nLocation: " + to + "\r\n\r\n"); }

void Sips(HostileTalk& talk, int) {
    while (talk.TakeByte())
        std::this_thread::sleep_for(20ms);
}

std::string Nested(int depth) {
    std::string bytes = '\x04' + IppValue('\x34', "media-col-default", "");
    for (int i = 0; i < depth; ++i)
        bytes += IppValue('\x4A', "", "x") + IppValue('\x34', "", "");
    return bytes;
}

TEST(HostileServer, NoneHoldsItsClient) {
    const std::string chunk = "1000\r\n" + std::string(0x1000, 'x') + "\r\n";
    const std::string huge = kIppOk + "Content-Length: 200000000\r\n\r\n";
    const std::string copies = IppAnswerOf(0).substr(0, 8) + '\x04' + IppNumber('\x21', "copies-supported", 1);
    std::string values;
    for (int i = 0; i < 1000; ++i)
        values += IppNumber('\x21', "", 1);
    const std::tuple<const char*, const char*, Serve, const char*> rows[] = {
        {"redirects to itself", "ipp", Redirect("/ipp/print"), "redirect"},
        {"goes on and on", "ipp", Endless("", kContinue), "goes on"},
        {"a line now and then", "ipp", Endless("HTTP/1.1 200 OK\r\n", "X-Line: x\r\n", 20ms), "too long"},
        {"a head in one line", "ipp", Endless("HTTP/1.1 200 OK\r\nX-Line: ", "x", 5ms), "too long"},
        {"endless chunks", "ipp", Endless(kIppOk + "Transfer-Encoding: chunked\r\n\r\n", chunk), "2097152 bytes"},
        {"an endless attribute", "ipp", Endless(huge + copies, values), "2097152 bytes"},
        {"200 MB", "ipp", Endless(huge, std::string(1 << 16, 'x')), "2097152 bytes"},
        {"a byte now and then", "ipp", Endless(huge, "x", 20ms), "too long"},
        {"nothing", "ipp", Endless("", "", 20ms), "too long"},
        {"encrypts a byte now and then", "ipps", Endless("\x16\x03\x03\x40", "x", 20ms), "too long"},
        {"wants a password", "ipp", Says("HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\n\r\n"),
         "password"},
        {"wants encryption", "ipp", Says("HTTP/1.1 426 Upgrade Required\r\n\r\n"), "ipps://"},
        {"has no such printer", "ipp", Says("HTTP/1.1 404 Not Found\r\n\r\n"), "404"},
        {"answers something else", "ipp", Answers("<html>"), "no whole message"},
        {"hangs up within its answer", "ipp", Says(kIppOk + "Content-Length: 99\r\n\r\n" + copies), "no whole message"},
        {"sheets in sheets in sheets", "ipp", Answers(IppAnswerOf(0, Nested(100'000))), "no whole message"},
        {"curses", "ipp", Answers(IppAnswerOf(0x0406, '\x01' + IppValue('\x41', "status-message", "\x1B[2J\r\nno"))),
         "client-error-not-found:  [2J  no"},
    };
    for (const auto& [why, scheme, serve, words] : rows) {
        const Told told;
        const HostileServer server(serve);
        const auto start = Clock::now();
        EXPECT_EQ(FindIppPrinter(server.Address(scheme), LimitsOf(words)), nullptr) << why;
        EXPECT_LT(Clock::now() - start, kAtOnce) << why;
        EXPECT_THAT(told.Lines(), HasSubstr(words)) << why;
        EXPECT_EQ(server.Clients(), 1) << why;
    }
}

/// A printer's address, whatever it says of itself, and `print` for the document; then `later` for each question about
/// it.
Serve Takes(const Serve& print, const Serve& later) {
    return [=](HostileTalk& talk, int client) {
        client == 1 ? Answers(IppAnswerOf(0))(talk, client) : client == 2 ? print(talk, client) : later(talk, client);
    };
}

/// Takes all of a document and answers.
Serve Prints(const std::string& answer) {
    return [=](HostileTalk& talk, int) {
        talk.Send(kContinue);
        talk.Take("%%EOF");
        talk.Answer(answer);
    };
}

std::string Job(int state, const std::string& words = "", int status = 0, const std::string& unsupported = "") {
    return IppAnswerOf(status, unsupported + '\x02' + IppNumber('\x21', "job-id", 7) +
                                   IppNumber('\x23', "job-state", static_cast<char>(state)) +
                                   IppValue('\x41', "job-state-message", words));
}

/// Hands over a document of eight megabytes. @param words null: nothing is told
void ExpectDelivery(const char* why, const Serve& serve, const IppLimits& limits, bool isDelivered, const char* words) {
    const Told told;
    const HostileServer server(serve);
    const auto printer = FindIppPrinter(server.Address(), limits);
    ASSERT_NE(printer, nullptr) << why;
    const auto job = printer->Begin({"job", printer->Defaults().paper});
    WriteDocument(*job, std::string(8 << 20, 'x') + "%%EOF");
    const auto start = Clock::now();
    EXPECT_EQ(job->Deliver(), isDelivered) << why;
    EXPECT_LT(Clock::now() - start, kAtOnce) << why;
    EXPECT_THAT(told.Lines(), HasSubstr(words ? words : "")) << why;
    EXPECT_EQ(told.Lines().empty(), words == nullptr) << why;
}

TEST(HostileServer, DocumentsAreWatchedOverATime) {
    const std::string without = '\x05' + IppValue('\x10', "media", "") + IppValue('\x10', "cop\nies", "");
    const Serve gone = [](HostileTalk&, int) {};
    const std::tuple<const char*, Serve, bool, const char*> rows[] = {
        // null: nothing is told
        {"prints", Takes(Prints(Job(9)), gone), true, nullptr},
        {"prints and prints", Takes(Prints(Job(3)), Answers(Job(5))), true, nullptr},
        {"takes it and goes", Takes(Prints(Job(3)), gone), true, nullptr},
        {"says nothing of a job", Takes(Prints(IppAnswerOf(0)), gone), true, nullptr},
        {"has no such paper", Takes(Prints(Job(9, "", 1, without)), gone), true, "taken, but for media, cop ies\n"},
        {"has something else", Takes(Prints(Job(9, "", 2)), gone), true, "taken, but for something"},
        {"aborts at once", Takes(Prints(Job(8, "no\npaper")), gone), false, "job 7 was given up: no paper\n"},
        {"aborts a moment later", Takes(Prints(Job(5)), Answers(Job(8, "jam"))), false, "job 7 was given up: jam\n"},
        {"cancels", Takes(Prints(Job(3)), Answers(Job(7))), false, "job 7 was given up"},
        {"reads nothing of it", Takes(Endless("", "", 20ms), gone), false, "too long"},
        {"reads a byte now and then", Takes(Sips, gone), false, "too long"},
        {"redirects it", Takes(Redirect("file:///dev/null"), gone), false, "redirect"},
    };
    for (const auto& [why, serve, isDelivered, words] : rows)
        ExpectDelivery(why, serve, LimitsOf(words), isDelivered, words);
    ExpectDelivery("the document's time ends before that of its first exchange", Takes(Endless("", "", 20ms), gone),
                   {10s, 300ms, 0s, 1000}, false, "too long");
}

} // namespace
} // namespace melkar
