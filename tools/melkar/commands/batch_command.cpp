#include "batch/finished.h"
#include "batch/pictures.h"
#include "command.h"
#include "draw_options.h"
#include "options.h"

#include <algorithm>
#include <iostream>

namespace melkar::tool {
namespace {

struct BatchOptions : ManifestOptions {
    bool again = false;
    std::string state;
};

void AddOptions(CLI::App& app, BatchOptions& options) {
    AddManifestOptions(app, options);
    app.add_flag("--again", options.again, "Draw all, also those that are finished");
    app.add_option("--state", options.state,
                   "Where it is kept which pictures are finished; MANIFEST.done, or MANIFEST.I-of-N.done, if not told")
        ->type_name("FILE");
    app.footer(Examples({
        "melkar batch samples/pictures.txt",
        "melkar batch samples/pictures.txt -j 2 --shard 1/2",
    }));
}

/// Empty for a manifest that comes through a pipe: nobody will start it again.
std::string StateFileOf(const BatchOptions& options) {
    if (!options.state.empty() || options.manifest == "-")
        return options.state;
    std::string shard = options.shard;
    std::replace(shard.begin(), shard.end(), '/', '.');
    if (const auto dot = shard.find('.'); dot != std::string::npos)
        shard.replace(dot, 1, "-of-");
    return options.manifest + (shard.empty() ? "" : "." + shard) + ".done";
}

Outcome DrawUnlessFinished(const Picture& picture, Finished& finished, bool again) {
    const std::string source = finished.SourceOf(picture);
    if (!again && finished.Has(source, picture))
        return Outcome::Kept;
    if (DrawFromBase(picture.request) != kDone)
        return Outcome::Failed;
    finished.Add(source, picture);
    return Outcome::Drawn;
}

int RunBatch(const BatchOptions& options) {
    const std::vector<Picture> pictures = PicturesOf(options);
    Finished finished(StateFileOf(options));
    const std::vector<Outcome> outcomes = ForEach(pictures, options, "drawing", [&](const Picture& picture) {
        return DrawUnlessFinished(picture, finished, options.again);
    });
    const auto count = [&outcomes](Outcome outcome) { return std::count(outcomes.begin(), outcomes.end(), outcome); };
    const auto failed = count(Outcome::Failed);
    std::cout << outcomes.size() << " pictures: " << count(Outcome::Drawn) << " drawn, " << count(Outcome::Kept)
              << " finished before, " << failed << " failed\n";
    return failed == 0 ? kDone : kFailed;
}

} // namespace

Run AddBatch(CLI::App& app) { return WithOptions(app, AddOptions, RunBatch); }

} // namespace melkar::tool
