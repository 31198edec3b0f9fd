// Whatever a print server on the loopback says, its client knows soon whether it has printed.

#include "../input.h"
#include "../room.h"

#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/printing/ipp_address.h>
#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/tests/hostile_server.h>

namespace melkar::fuzz {
namespace {

using namespace std::chrono_literals;

constexpr IppLimits kShort{200ms, 400ms, 60ms, std::size_t{1} << 16};
constexpr auto kAtOnce = 8s; // a clock's mercy on a busy machine
constexpr std::string_view kHttp = "HTTP/";

/// Bytes as they are, or those of a message with the ordinary head before it.
void Say(HostileTalk& talk, std::string_view answer) {
    if (answer.starts_with(kHttp))
        talk.Send(answer);
    else
        talk.Answer(std::string(answer));
}

void Deliver(Printer& printer) {
    const Paper* paper = printer.Defaults().paper;
    Require(paper != nullptr, "a printer has a paper");
    for (const short code : {DMPAPER_A4, DMPAPER_LETTER, DMPAPER_JAPANESE_POSTCARD}) {
        const Margins margins = printer.MarginsOf(*FindPaper(code));
        for (const int margin : {margins.left, margins.top, margins.right, margins.bottom})
            Require(margin >= 0 && margin <= 3000, "a margin is no more than three centimetres");
        const SheetLayout sheet = LayOutSheet(*FindPaper(code), margins, margins.left > 0);
        Require(sheet.roomWidth >= 1 && sheet.roomHeight >= 1, "a sheet has room");
    }
    const auto job = printer.Begin({"job", paper});
    Require(job != nullptr, "a document is begun");
    constexpr std::string_view kDocument = "%PDF %%EOF";
    const auto document = job->Document();
    Require(document != nullptr && document->Write(kDocument.data(), kDocument.size()) && document->Commit() == 0,
            "a document is written");
    job->Deliver();
}

/// The first line is an address to take apart; then come the answers, one for each client, the last one for all that
/// follow.
void TalkToServer(std::string_view input) {
    const Visit visit;
    ParseAddress(std::string(TakeLine(input)));
    const std::vector<std::string_view> answers = PartsOf(input, 3);
    HostileServer server([&answers](HostileTalk& talk, int client) {
        if (client == 2) {
            talk.Send("HTTP/1.1 100 Continue\r\n\r\n");
            talk.Take("%%EOF");
        }
        Say(talk, answers[std::min<std::size_t>(static_cast<std::size_t>(client), answers.size()) - 1]);
    });
    const auto start = Clock::now();
    if (const auto printer = FindIppPrinter(server.Address(), kShort))
        Deliver(*printer);
    Require(Clock::now() - start < kAtOnce, "a server holds nobody");
}

std::string Size(char hundreds) {
    return IppValue('\x4A', "", "media-size") + IppValue('\x34', "", "") + IppValue('\x4A', "", "x-dimension") +
           IppValue('\x21', "", std::string{0, 0, hundreds, 0x08}) + IppValue('\x4A', "", "y-dimension") +
           IppValue('\x21', "", {"\0\0\x74\x04", 4}) + IppValue('\x37', "", "") +
           IppValue('\x4A', "", "media-left-margin") + IppValue('\x21', "", {"\0\0\1\xF4", 4});
}

void SeedServers(Seeds& seeds) {
    const std::string between(kBetweenParts);
    const std::string media = IppValue('\x44', "media-default", "iso_a4_210x297mm") +
                              IppValue('\x34', "media-col-default", "") + Size(0x52) + IppValue('\x37', "", "") +
                              IppValue('\x34', "media-col-database", "") + Size(0x53) + IppValue('\x37', "", "") +
                              IppValue('\x44', "print-color-mode-supported", "monochrome");
    const std::string printer = IppAnswerOf(0, '\x04' + media);
    const auto job = [](int status, char state, const std::string& group) {
        return IppAnswerOf(status, group + '\x02' + IppNumber('\x21', "job-id", 7) +
                                       IppNumber('\x23', "job-state", state) +
                                       IppValue('\x41', "job-state-message", "jam\n"));
    };
    const std::string unsupported = '\x05' + IppValue('\x10', "media", "");
    seeds.add("prints", "ipp://[::1]:631/x?y\n" + printer + between + job(0, 5, "") + between + job(0, 9, ""));
    seeds.add("gives-up", "ipps://a%20b\n" + printer + between + job(1, 3, unsupported) + between + job(0, 8, ""));
    seeds.add("refuses", "queue/../x\n" + printer + between +
                             IppAnswerOf(0x0406, '\1' + IppValue('\x41', "status-message", "no")));
    seeds.add("says-nothing-of-itself", "ipp://:0\n" + IppAnswerOf(0) + between + IppAnswerOf(0));
    seeds.add("chunks", "ipp://a:99999999999\nHTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n8\r\n" +
                            printer.substr(0, 8) + "\r\n0\r\n\r\n");
    seeds.add("redirects", "\nHTTP/1.1 302 Found\r\nLocation: file:///dev/null\r\n\r\n");
    seeds.add("wants-a-password", "\nHTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\n\r\n");
    seeds.words = {"HTTP/1.1 200 OK\r\n",
                   "HTTP/1.1 100 Continue\r\n\r\n",
                   "Content-Length: ",
                   "Transfer-Encoding: chunked\r\n",
                   "job-id",
                   "job-state",
                   "media-col-database",
                   "media-size",
                   "ipps://",
                   "\r\n\r\n",
                   between};
}

} // namespace

extern const Target kIpp;
const Target kIpp{"ipp", "an address, and what a print server answers", TalkToServer, SeedServers};

} // namespace melkar::fuzz
