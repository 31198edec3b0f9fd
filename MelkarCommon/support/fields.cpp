#include <MelkarCommon/support/fields.h>

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/plain_decimal.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

constexpr std::size_t kLongestField = 1279;
constexpr std::size_t kLongestLine = 9999;

/// The field that begins at `start`. It is a stretch of the line as it stands, since quotes inside of it stay.
std::string_view FieldAt(const char* start) {
    const bool isQuoted = *start == '"';
    if (isQuoted)
        ++start;
    std::size_t length = 0;
    for (; length < kLongestField; ++length) {
        const char c = start[length];
        const bool isEnd =
            isQuoted ? c == '\0' || (c == '"' && melkar::EndsField(start[length + 1])) : melkar::EndsField(c);
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

/// By itself, so that plain figures need no room on the stack.
[[gnu::noinline]] double AnyValueAt(const char* field) { return melkar::ToDouble(CString(FieldAt(field))); }

double ValueAt(const char* field) {
    const double plain = melkar::PlainDecimal(field);
    return std::isnan(plain) ? AnyValueAt(field) : plain;
}

/// The highest bit of each of eight bytes that is a comma; the lowest byte is the first of the text.
std::uint64_t CommasIn(const char* text) {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    if constexpr (std::endian::native == std::endian::big)
        bytes = __builtin_bswap64(bytes);
    const std::uint64_t others = bytes ^ (kEach * ',');
    return ~(((others & kEach * 0x7F) + kEach * 0x7F) | others) & kEach * 0x80;
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

/// Eight bytes at a time: lines have hundreds of fields of a few bytes.
void CsvRow::Split(const char* line) {
    if (!line)
        return m_starts.clear();
    const char* const end = line + std::strlen(line);
    m_starts.resize(1 + static_cast<std::size_t>(std::count(line, end, ',')));
    auto next = m_starts.begin();
    *next++ = line;
    for (; end - line >= 8; line += 8)
        for (std::uint64_t commas = CommasIn(line); commas != 0; commas &= commas - 1)
            *next++ = line + std::countr_zero(commas) / 8 + 1;
    for (; line != end; ++line)
        if (*line == ',')
            *next++ = line + 1;
}

const char* CsvRow::Start(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < m_starts.size() ? m_starts[static_cast<std::size_t>(index)]
                                                                           : "";
}

CString CsvRow::Field(int index) const { return CString(View(index)); }

std::string_view CsvRow::View(int index) const { return FieldAt(Start(index)); }

int CsvRow::IntField(int index) const { return ParseInt(View(index)); }

double CsvRow::DoubleField(int index) const { return ValueAt(Start(index)); }

double CsvRow::PlainField(int index) const { return melkar::PlainDecimal(Start(index)); }

void CsvRow::DoubleFields(int first, int count, double* values) const {
    for (int i = 0; i < count; ++i)
        values[i] = ValueAt(Start(first + i));
}

} // namespace melkar
