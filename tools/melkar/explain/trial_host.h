#pragma once

#include "../files.h"

#include <string>

namespace melkar::tool {

/// The directory of a host that isn't there: what is drawn from it has the profile that was written last, and the
/// formats of dates of another host. Nothing is logged from there. It goes with the object.
class TrialHost {
public:
    explicit TrialHost(const std::string& base); ///< whose formats it has, if there are any

    std::string Base() const { return m_place.Path() + "/bin"; } ///< for a `HostDirectory`
    void WriteProfile(const std::string& text) const;
    /// A data file. @return its path
    std::string WriteData(const std::string& name, const std::string& text) const;

private:
    TemporaryFile m_place;
};

/// All bytes of a file; none of one that can't be read.
std::string BytesOf(const std::string& path);

} // namespace melkar::tool
