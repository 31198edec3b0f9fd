#pragma once

#include "target.h"

#include <MelkarCommon/registry/catalogue.h>

/// @file
/// Profiles and data files made from the tables of keys and columns.

namespace melkar::fuzz {

/// Every key that a graph of the row reads, and the first ones of every numbered row, in sections COMMON and OWN: with
/// its example.
std::string ProfileOf(const KindRow& row);
/// The same with one value for all.
std::string ProfileOf(const KindRow& row, const std::string& value);
/// Sections, keys and values.
void AddProfileWords(Seeds& seeds);

/// A file whose columns all hold one value, the status of a day left aside; three rows of it behind the heads.
std::string DataOf(const DataTable& table, const std::string& value);

} // namespace melkar::fuzz
