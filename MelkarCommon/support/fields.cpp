#include <MelkarCommon/support/fields.h>

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/numbers.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace {

constexpr std::size_t kLongestField = 1279;
constexpr std::size_t kLongestLine = 9999;

bool EndsField(char c) { return c == ',' || c == '\n' || c == '\0'; }

/// The field that begins at `start`. It is a stretch of the line as it stands, since quotes inside of it stay.
std::string_view FieldAt(const char* start) {
    const bool isQuoted = *start == '"';
    if (isQuoted)
        ++start;
    std::size_t length = 0;
    for (; length < kLongestField; ++length) {
        const char c = start[length];
        const bool isEnd = isQuoted ? c == '\0' || (c == '"' && EndsField(start[length + 1])) : EndsField(c);
        if (isEnd)
            break;
    }
    return {start, length};
}

/// Where field `index` begins: behind so many commas, quotes or no quotes. Null if there are fewer.
const char* FindField(const char* line, int index) {
    if (!line || index < 0)
        return nullptr;
    for (; index > 0; ++line) { // byte by byte: fields are a few bytes short
        if (*line == '\0')
            return nullptr;
        if (*line == ',')
            --index;
    }
    return line;
}

/// The value of a field of plain digits with at most one point, as nearly all are; nothing for any other field. Whole
/// number and power of ten are exact, so that their quotient is the nearest double, as of any other way of reading.
std::optional<double> PlainDecimal(const char* field) {
    constexpr int kExactDigits = 15;
    constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    std::int64_t number = 0;
    int digits = 0;
    const auto takeDigits = [&] {
        for (; melkar::IsDigit(*field) && digits <= kExactDigits; ++field, ++digits)
            number = number * 10 + (*field - '0');
    };
    takeDigits();
    const int whole = digits;
    if (*field == '.') {
        ++field;
        takeDigits();
    }
    if (digits == 0 || digits > kExactDigits || !EndsField(*field))
        return std::nullopt;
    return static_cast<double>(number) / kPowers[digits - whole];
}

} // namespace

CString getCSV(const char* line, int index, const char* search, const char* replacement) {
    const char* start = FindField(line, index);
    CString field = start ? CString(FieldAt(start)) : CString();
    if (search && replacement)
        field.Replace(search, replacement);
    return field;
}

CString getCSVEx(const char* file, int lineNumber, int index, const char* search, const char* replacement) {
    melkar::LineReader reader(file);
    const char* line = lineNumber < 0 ? nullptr : reader.Next(kLongestLine);
    for (; line && lineNumber > 0; --lineNumber)
        line = reader.Next(kLongestLine);
    return getCSV(line, index, search, replacement);
}

namespace melkar {

void CsvRow::Split(const char* line) {
    m_starts.clear();
    if (!line)
        return;
    m_starts.push_back(line);
    for (; *line != '\0'; ++line)
        if (*line == ',')
            m_starts.push_back(line + 1);
}

const char* CsvRow::Start(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < m_starts.size() ? m_starts[static_cast<std::size_t>(index)]
                                                                           : "";
}

CString CsvRow::Field(int index) const { return CString(FieldAt(Start(index))); }

int CsvRow::IntField(int index) const { return ParseInt(FieldAt(Start(index))); }

double CsvRow::DoubleField(int index) const {
    const std::optional<double> plain = PlainDecimal(Start(index));
    return plain ? *plain : ToDouble(Field(index));
}

} // namespace melkar
