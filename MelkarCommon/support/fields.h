#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>

#include <string_view>
#include <vector>

/// @file
/// Fields of comma-separated lines. A field begins behind its comma, quotes or no quotes; it ends at a
/// comma, a line feed or the end of the text, a quoted one at a double quote that such an end follows.
/// A field holds at most 1279 bytes; what is longer is cut.
///
/// @code{.cpp}
/// const melkar::CsvRow row("0,20260302,9600");
/// std::printf("%s: %d\n", row.Field(1).GetString(), row.IntField(2)); // 20260302: 9600
/// @endcode

/// Field number `index` (from 0) of a line, empty if there is none. If `search` and `replacement` are both
/// given, every occurrence of the one is replaced by the other.
MELKAR_API CString getCSV(const char* line, int index, const char* search = nullptr, const char* replacement = nullptr);

/// Field `index` of line `lineNumber` (both from 0) of a file whose lines hold at most 9999 characters (a longer
/// one continues as a further line). Empty if the file can't be opened or has no such line.
MELKAR_API CString getCSVEx(const char* file, int lineNumber, int index, const char* search = nullptr,
                            const char* replacement = nullptr);

namespace melkar {

/// A line split once: the same fields as `getCSV`, each found at once however wide the line.
class MELKAR_API CsvRow {
public:
    /// `line` must stay alive as long as the row; null counts as empty.
    explicit CsvRow(const char* line) { Split(line); }
    CsvRow() = default;
    void Split(const char* line);           ///< takes another line, keeping the memory
    CString Field(int index) const;         ///< empty if there is none
    std::string_view View(int index) const; ///< the same without a copy: valid as long as the line
    int IntField(int index) const;          ///< through `atoi`
    double DoubleField(int index) const;    ///< through `atof`
    void DoubleFields(int first, int count, double* values) const; ///< likewise, of columns side by side
    /// The same for digits with at most one point, or nothing, as nearly all fields are; not a number for any other.
    double PlainField(int index) const;

private:
    MELKAR_LOCAL const char* Start(int index) const;

    std::vector<const char*> m_starts;
};

} // namespace melkar
