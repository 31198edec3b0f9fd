#pragma once

#include "draw.h"
#include "manifest.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

/// @file
/// The pictures of a manifest, and work on all of them.

namespace melkar::tool {

/// What `batch` and `verify` take alike.
struct ManifestOptions {
    std::string manifest;
    int jobs = 0; ///< threads; 0: as many as the machine has cores
    std::string shard;
};

void AddManifestOptions(CLI::App& app, ManifestOptions& options);

struct Picture {
    ManifestRow row;
    Request request;
};

/// Those of this shard, in the order of their lines. Every row of the manifest is looked at before: those that make no
/// sense are told, and with one of them there are no pictures. Throws UsageError.
std::vector<Picture> PicturesOf(const ManifestOptions& options);

/// What came of a picture: of drawing it, and of looking whether its file is as it would be drawn.
enum class Outcome { Failed, Drawn, Kept, Same, Differs, Missing };

/// Works on all pictures, on several threads, and tells how far it has come. What the work says is told at the end, in
/// the order of the lines, with their numbers. Work that throws has failed. @param doing what is done, for the progress
/// @return what came of each picture
std::vector<Outcome> ForEach(const std::vector<Picture>& pictures, const ManifestOptions& options, const char* doing,
                             const std::function<Outcome(const Picture& picture)>& work);

} // namespace melkar::tool
