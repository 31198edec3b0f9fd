#pragma once

#include "notes.h"

#include <string>

/// @file
/// What the table of forms runs. Each throws `Refusal` or `WrongRequest`, and gives a summary.

namespace melkar::importer {

struct Request;

std::string ImportCsv(const Request& request, Notes& notes);
std::string ImportFhir(const Request& request, Notes& notes);
std::string ImportEpochs(const Request& request, Notes& notes);

} // namespace melkar::importer
