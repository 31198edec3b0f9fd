#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/telling/words.h>

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// What a picture shows, as a table.

namespace melkar {

/// Texts in rows of one length.
struct ContentsTable {
    std::vector<std::string> head;              ///< of each column
    std::vector<std::vector<std::string>> rows; ///< one for each item
};

/// A row for each item, a column for each series, between the caption and what else there is to say: the sum of a
/// stack, whether the target was reached, a note. A column that no item needs isn't there. UTF-8, each cell in a line.
MELKAR_API ContentsTable TableOf(const Contents& contents, const DescriptionWords& words = DescriptionWords());

/// The same of a picture of several parts, such as the sheets of a week: the title of its part comes before each row.
MELKAR_API ContentsTable TableOf(const std::vector<Contents>& parts, const DescriptionWords& words);

/// Whether all texts of a column are figures, to stand at the right.
MELKAR_API bool IsFigureColumn(const ContentsTable& table, std::size_t column);

/// As a file of comma-separated values after RFC 4180, head first.
MELKAR_API std::string CsvOf(const ContentsTable& table);

/// As lines of a text with columns of one width, figures at the right.
MELKAR_API std::string TextOf(const ContentsTable& table);

} // namespace melkar
