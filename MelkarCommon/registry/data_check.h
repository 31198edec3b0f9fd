#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/data_table.h>

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// Whether a data file suits the kind it is drawn as. The library takes any file and makes the best of it, so that a
/// wrong one shows as a chart of nothing.

namespace melkar {

/// What doesn't suit, in a sentence without a full stop.
struct DataFinding {
    std::string file;      ///< its path
    int line = 0;          ///< from 1; 0: it is about the whole file
    int column = 0;        ///< from 1; 0: it is about the whole line
    const char* rule = ""; ///< one word for all of the sort
    std::string text;      ///< the sentence
};

/// What doesn't suit in the whole file.
struct DataFindings {
    std::vector<DataFinding> first; ///< as many as were asked for
    std::size_t count = 0;          ///< of all
};

/// A scale of a profile.
struct DataScale {
    std::string top; ///< key of its top
    double from = 0; ///< lowest value
    double to = 0;   ///< highest value
};

/// What host and profile decide about a file.
struct DataUse {
    int series = 0;                ///< figures per day, where that is for the host to say
    int page = 0;                  ///< week that is drawn of a file of weeks, from 0
    std::vector<DataScale> scales; ///< that the profile has; figures on others aren't held against any
    int colors = -1;               ///< rows that the profile has a colour for; -1: that isn't known
    std::size_t most = 1000;       ///< findings that are kept
};

/// Looks through the file at `path` (and the suffix of the table). None if it suits, can't be read or isn't text in
/// columns. @param table what such a file looks like @param path of the file @param use what else is known
MELKAR_API DataFindings CheckData(const DataTable& table, const std::string& path, const DataUse& use);
/// The same for who knows no profile. @param table as above @param path as above @param series figures per day
/// @param most findings that are kept
MELKAR_API DataFindings CheckData(const DataTable& table, const std::string& path, int series, std::size_t most);

} // namespace melkar
