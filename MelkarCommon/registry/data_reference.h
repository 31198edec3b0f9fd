#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/data_table.h>

#include <string>
#include <string_view>
#include <vector>

/// @file
/// Data files explained, from the tables that readers walk.

namespace melkar {

/// All kinds as a Markdown page.
MELKAR_API std::string DataReference();

/// One kind as such a page; empty if there is no such kind.
MELKAR_API std::string DataReferenceOf(std::string_view kind);

/// A small file that the table describes, with ordinary values. Empty if it isn't text in columns.
MELKAR_API std::string ExampleFile(const DataTable& table);

} // namespace melkar
