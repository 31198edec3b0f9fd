#include "causes.h"

#include "other_values.h"

#include <MelkarCommon/platform/host_directory.h>

#include <algorithm>
#include <filesystem>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

} // namespace

CauseSearch::CauseSearch(const Request& request, const std::string& base, CPoint at, const PixelStory& story)
    : m_request(request), m_profile(fs::weakly_canonical(base + "/../conf/graph.cnf").string()), m_at(at),
      m_story(story), m_host(base), m_cells(*request.kind, request.data, request.chart.series) {}

PixelStory CauseSearch::Draw(const Request& request) {
    --m_left;
    const HostDirectory host(m_host.Base().c_str());
    return StoryOf(request, m_at);
}

std::vector<Cause> CauseSearch::Keys() {
    ProfileUse use;
    use.kind = m_request.kind->kind;
    use.section = m_request.chart.section;
    use.key = m_request.chart.key;
    std::vector<Cause> causes;
    for (const EffectiveKey& key : EffectiveKeys(m_profile, use)) {
        if (key.role == KeyRole::Idle)
            continue;
        for (const std::string& other : OtherValues(key)) {
            if (m_left <= 0)
                return causes;
            m_host.WriteProfile(ChangedProfile(m_profile, key, other));
            PixelStory story = Draw(m_request);
            if (story.EndsLike(m_story))
                continue;
            causes.push_back(
                {m_profile, key.line, 0, key.section, key.name, key.value, key.meaning, other, std::move(story)});
            break;
        }
    }
    return causes;
}

PixelStory CauseSearch::DrawWith(std::span<const OtherCell> others) {
    Request request = m_request;
    const std::string name = fs::path(m_request.data).filename().string();
    for (std::size_t file = 0; file < m_cells.Files(); ++file) {
        const std::string path = m_host.WriteData(name + m_cells.SuffixOf(file), m_cells.TextOf(file, others));
        if (m_cells.SuffixOf(file).empty())
            request.data = path;
    }
    return Draw(request);
}

/// Halves what changes something, until single cells are left.
void CauseSearch::Search(std::span<const OtherCell> others, std::vector<Cause>& causes) {
    if (others.empty() || m_left <= 0)
        return;
    PixelStory story = DrawWith(others);
    if (story.EndsLike(m_story))
        return;
    if (others.size() > 1) {
        Search(others.first(others.size() / 2), causes);
        Search(others.subspan(others.size() / 2), causes);
        return;
    }
    const auto& [cell, value] = others.front();
    causes.push_back({m_cells.PathOf(cell->file), static_cast<int>(cell->line) + 1, cell->column + 1, "",
                      cell->info.name, cell->value, cell->info.meaning, value, std::move(story)});
}

std::vector<Cause> CauseSearch::Cells() {
    m_host.WriteProfile(BytesOf(m_profile));
    std::vector<Cause> causes;
    constexpr std::size_t kMostValues = 2;
    for (std::size_t which = 0; which < kMostValues; ++which) {
        std::vector<OtherCell> others;
        for (const DataCell& cell : m_cells.All())
            if (const std::vector<std::string> values = OtherValues(cell.info, cell.value); which < values.size())
                others.push_back({&cell, values[which]});
        std::vector<Cause> found;
        Search(others, found);
        for (Cause& cause : found) {
            const auto isSame = [&](const Cause& former) {
                return former.file == cause.file && former.line == cause.line && former.column == cause.column;
            };
            if (std::none_of(causes.begin(), causes.end(), isSame))
                causes.push_back(std::move(cause));
        }
    }
    return causes;
}

} // namespace melkar::tool
