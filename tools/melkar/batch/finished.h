#pragma once

#include "pictures.h"

#include <mutex>
#include <string>
#include <unordered_set>

/// @file
/// Which pictures of a manifest needn't be drawn again.

namespace melkar::tool {

/// A picture is finished if a run has drawn it from the very bytes that its row, the profile, its data and the program
/// have now, and its file still holds what that run wrote. No times are looked at: a file that is older, copied or put
/// back counts by its contents. Kept in a file, a line of two fingerprints a picture, which may be deleted at any time
/// and to which several processes may add at once.
class Finished {
public:
    /// Takes in what runs of all shards left beside `path`, that of this run; nothing is kept for an empty one.
    explicit Finished(const std::string& path);

    /// What the picture is drawn from, to be taken before it is drawn.
    std::string SourceOf(const Picture& picture) const;
    bool Has(const std::string& source, const Picture& picture) const;
    void Add(const std::string& source, const Picture& picture);

private:
    const std::string m_path;
    const std::string m_program;
    std::unordered_set<std::string> m_lines;
    std::mutex m_mutex; ///< of the file
};

} // namespace melkar::tool
