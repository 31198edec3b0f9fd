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

/// Looks through the file at `path` (and the suffix of the table). None if it suits, can't be read or isn't text in
/// columns. @param table what such a file looks like @param path of the file @param series figures per day, where that
/// is for the host to say @param most findings that are kept
MELKAR_API DataFindings CheckData(const DataTable& table, const std::string& path, int series, std::size_t most);

} // namespace melkar
