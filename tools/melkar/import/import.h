#pragma once

#include "notes.h"

#include <string>
#include <vector>

/// @file
/// What people have becomes the data files of a kind.

namespace melkar::importer {

/// An import as it was asked for; what is empty wasn't told.
struct Request {
    std::string path;   ///< of the source, which is read twice
    std::string kind;   ///< of the catalogue
    std::string output; ///< path of the data file
    std::string date;   ///< column of the day or moment
    std::vector<std::string> figures;
    std::vector<std::string> units;  ///< of the source, in the order of the figures; one is that of all
    std::vector<std::string> become; ///< units in the file, where the kind has none
    std::string dateFormat;
    std::string decimals; ///< point or comma
    std::string from;     ///< first day
    std::string to;       ///< last day
    std::string caption;
    bool sum = false; ///< figures of a day add up, as far as their measure does
};

/// A form in which things come.
struct Form {
    const char* name;
    const char* says;
    /// Reads all and writes the files. Throws `Refusal` or `WrongRequest`. @return a summary
    std::string (*run)(const Request& request, Notes& notes);
};

const std::vector<Form>& Forms();
/// Null if there is no such form.
const Form* FindForm(const std::string& name);

} // namespace melkar::importer
