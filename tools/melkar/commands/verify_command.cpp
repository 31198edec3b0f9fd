#include "batch/pictures.h"
#include "command.h"
#include "draw_options.h"
#include "files.h"
#include "options.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>

namespace melkar::tool {
namespace {

void AddOptions(CLI::App& app, ManifestOptions& options) {
    AddManifestOptions(app, options);
    app.footer(Examples({
        "melkar verify samples/pictures.txt",
        "melkar verify samples/pictures.txt --shard 1/2",
    }));
}

bool SameBytes(const std::string& a, const std::string& b) {
    std::ifstream one(a, std::ios::binary);
    std::ifstream other(b, std::ios::binary);
    const std::istreambuf_iterator<char> end;
    return std::equal(std::istreambuf_iterator<char>(one), end, std::istreambuf_iterator<char>(other), end);
}

/// Draws into memory, and leaves the picture's file alone.
Outcome Compare(const Picture& picture) {
    const TemporaryFile drawn("picture", TemporaryFile::InMemory());
    Request request = picture.request;
    request.out = drawn.Path();
    if (DrawFromBase(request) != kDone)
        return Outcome::Failed;
    if (!std::ifstream(picture.request.out))
        return Outcome::Missing;
    return SameBytes(drawn.Path(), picture.request.out) ? Outcome::Same : Outcome::Differs;
}

int RunVerify(const ManifestOptions& options) {
    const std::vector<Picture> pictures = PicturesOf(options);
    const std::vector<Outcome> outcomes = ForEach(pictures, options, "comparing", Compare);
    for (std::size_t at = 0; at < pictures.size(); ++at)
        if (outcomes[at] == Outcome::Differs || outcomes[at] == Outcome::Missing)
            std::cout << options.manifest << ':' << pictures[at].row.line << ": " << pictures[at].request.out
                      << (outcomes[at] == Outcome::Missing ? ": is missing\n" : ": differs\n");
    const auto same = static_cast<std::size_t>(std::count(outcomes.begin(), outcomes.end(), Outcome::Same));
    std::cout << outcomes.size() << " pictures: " << same << " as they would be drawn\n";
    return same == outcomes.size() ? kDone : kFailed;
}

} // namespace

Run AddVerify(CLI::App& app) { return WithOptions(app, AddOptions, RunVerify); }

} // namespace melkar::tool
