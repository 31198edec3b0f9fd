#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/checker/doubt.h>

#include <string>
#include <vector>

/// @file
/// Asks for doubts about a profile or a data file without drawing, and without a word in the log.
///
/// @code{.cpp}
/// for (const melkar::Doubt& doubt : melkar::Doubts("../conf/graph.cnf", "STEPS", "steps"))
///     std::puts(melkar::ToText(doubt).c_str());
/// @endcode

namespace melkar {

/// What a profile is looked at for.
struct ProfileUse {
    std::string section; ///< of the graph, looked at with COMMON; empty for all sections of the file
    std::string kind;    ///< one of the catalogue; empty for the one that the keys of a section suit best
    std::string key;     ///< of the text that kind `text` shows; empty for all that the section has
    int width = 900;     ///< of the picture, device units
    int height = 500;    ///< of the picture, device units
};

/// Doubts about a profile, in the order of its lines. A comment "; melkar: allow RULE..." silences these rules on the
/// next line that is none; around the head of a section, in all of that. @param path empty for the profile of all
/// graphs @param use what it is looked at for
MELKAR_API std::vector<Doubt> Doubts(const std::string& path, const ProfileUse& use);
/// The same for a graph of that kind, which is made with that section.
MELKAR_API std::vector<Doubt> Doubts(const std::string& path, const std::string& section, const std::string& kind);

/// What a data file is looked at for.
struct DataFileUse {
    std::string kind;    ///< one of the catalogue, as which the file is drawn
    std::string profile; ///< with the section: whose scales and colours the figures are held against; empty for the
                         ///< profile of all graphs
    std::string section; ///< of the graph; empty: the file is looked at alone
    int series = 0;      ///< figures per day, where that is for the host to say
    int page = 0;        ///< week that is drawn of a file of weeks, from 0
};

/// Doubts about a data file, and about what its kind reads beside it, in the order of their lines.
MELKAR_API std::vector<Doubt> DataDoubts(const std::string& path, const DataFileUse& use);

} // namespace melkar
