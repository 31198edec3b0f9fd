#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

/// @file
/// A manifest: the pictures to draw, one a line, each with the arguments of `melkar draw`, quoted as in a shell. Blank
/// lines and comments, from a # at the start of a word on, count for nothing.

namespace melkar::tool {

struct ManifestRow {
    int line; ///< from 1
    std::vector<std::string> words;
};

/// The words of a line; none at all if a quote isn't closed. Within '...' all stands for itself, within "..." all but
/// \" and \\, elsewhere a backslash takes its meaning from what follows. Nothing else of a shell is known: no
/// variables, no patterns.
std::optional<std::vector<std::string>> SplitWords(const std::string& line);

/// Throws UsageError for a line that can't be split; `name` stands in the sentence.
std::vector<ManifestRow> ReadManifest(std::istream& text, const std::string& name);

/// Which rows of a manifest are drawn here, where several machines share them.
struct Shard {
    int index = 1; ///< from 1 to `count`
    int count = 1;

    bool Has(int line) const { return (line - 1) % count == index - 1; }
};

/// "2/5"; nothing for what is none.
std::optional<Shard> ParseShard(const std::string& text);

} // namespace melkar::tool
