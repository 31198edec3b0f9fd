#include "warnings.h"

#include "messages.h"

#include <MelkarCommon/checker/doubts.h>
#include <MelkarCommon/hosts.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace melkar::tool {
namespace {

std::vector<Doubt> DoubtsOfProfile(const Request& request, const std::string& profile) {
    ProfileUse use;
    use.section = request.chart.section;
    use.kind = request.kind->kind;
    use.key = request.chart.key;
    use.width = request.size.width;
    use.height = request.size.height;
    return Doubts(profile, use);
}

std::vector<Doubt> DoubtsOfData(const Request& request, const std::string& profile) {
    DataFileUse use;
    use.kind = request.kind->kind;
    use.profile = profile;
    use.section = request.chart.section;
    use.series = request.chart.series;
    use.page = request.chart.page;
    std::vector<Doubt> doubts = DataDoubts(request.data, use);
    std::erase_if(doubts, [&](const Doubt& doubt) { // its reader fails, and tells
        return doubt.file == request.data && doubt.rule == std::string_view("unreadable");
    });
    return doubts;
}

std::size_t WarnOf(std::vector<Doubt> doubts) {
    constexpr std::size_t kMostWarnings = 10;
    std::erase_if(doubts, [](const Doubt& doubt) { return doubt.level == DoubtLevel::Hint; });
    for (std::size_t i = 0; i < std::min(doubts.size(), kMostWarnings); ++i)
        Warn(PlaceOf(doubts[i]) + ": " + doubts[i].text + " [" + doubts[i].rule + "]");
    if (doubts.size() > kMostWarnings)
        Warn(doubts.front().file + ": and " + std::to_string(doubts.size() - kMostWarnings) +
             " more, which melkar check tells");
    return doubts.size();
}

} // namespace

std::size_t WarnOfDoubts(const Request& request) {
    const std::string profile =
        std::filesystem::weakly_canonical(HostPlace().Directory() + "/../conf/graph.cnf").string();
    if (FilesReadBy(*request.kind).empty() && !request.data.empty())
        Warn(request.data + ": this kind takes no data file");
    return WarnOf(DoubtsOfProfile(request, profile)) + WarnOf(DoubtsOfData(request, profile));
}

} // namespace melkar::tool
