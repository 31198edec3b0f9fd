#pragma once

#include <MelkarCommon/checker/effective_keys.h>
#include <MelkarCommon/frame/data_table.h>

#include <string>
#include <vector>

/// @file
/// What a value may be instead, to find out what hangs on it: near enough to leave a chart a chart, far enough to be
/// seen.

namespace melkar::tool {

/// At most two.
std::vector<std::string> OtherValues(const EffectiveKey& key);
std::vector<std::string> OtherValues(const ColumnInfo& column, const std::string& value);

} // namespace melkar::tool
