#include "finished.h"

#include "fingerprint.h"
#include "messages.h"

#include <filesystem>
#include <fstream>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSuffix = ".done";

/// "plan.txt.done" and "plan.txt.2-of-5.done" are of one manifest.
std::string ManifestOf(const fs::path& state) {
    const std::string name = state.filename().string();
    if (!name.ends_with(kSuffix))
        return "";
    const std::string rest = name.substr(0, name.size() - kSuffix.size());
    const auto dot = rest.find_last_of('.');
    const auto isShard = [](std::string_view part) { return part.find("-of-") != std::string_view::npos; };
    return dot != std::string::npos && isShard(std::string_view(rest).substr(dot)) ? rest.substr(0, dot) : rest;
}

std::string LineOf(const std::string& source, const Picture& picture) {
    return source + " " + Fingerprint().AddFile(picture.request.out).Text();
}

} // namespace

Finished::Finished(const std::string& path) : m_path(path), m_program(path.empty() ? "" : ProgramFingerprint()) {
    if (path.empty())
        return;
    const fs::path state = fs::absolute(path);
    const auto takeIn = [this](const fs::path& file) {
        std::ifstream lines(file);
        for (std::string line; std::getline(lines, line);)
            m_lines.insert(line);
    };
    takeIn(state);
    std::error_code none;
    for (const auto& other : fs::directory_iterator(state.parent_path(), none))
        if (const std::string manifest = ManifestOf(other.path()); !manifest.empty() && manifest == ManifestOf(state))
            takeIn(other.path());
}

std::string Finished::SourceOf(const Picture& picture) const {
    Fingerprint source;
    source.Add(m_program);
    for (const std::string& word : picture.row.words)
        source.Add(word);
    for (const std::string& file : FilesReadFor(picture.request))
        source.AddFile(file);
    return source.Text();
}

bool Finished::Has(const std::string& source, const Picture& picture) const {
    return !m_lines.empty() && m_lines.contains(LineOf(source, picture));
}

void Finished::Add(const std::string& source, const Picture& picture) {
    if (m_path.empty())
        return;
    const std::string line = LineOf(source, picture) + "\n";
    const std::lock_guard lock(m_mutex);
    if (!(std::ofstream(m_path, std::ios::app) << line).flush())
        Warn("can't be written, so that the picture will be drawn again: " + m_path);
}

} // namespace melkar::tool
