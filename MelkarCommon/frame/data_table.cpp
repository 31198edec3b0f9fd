#include <MelkarCommon/frame/data_table.h>

#include <MelkarCommon/support/numbers.h>

#include <cstdio>

namespace melkar {

std::vector<ColumnInfo> ColumnsFor(const DataTable& table, int series) {
    std::vector<ColumnInfo> columns = table.columns;
    const auto first = std::find_if(columns.begin(), columns.end(), [](const ColumnInfo& one) { return one.isSeries; });
    if (first == columns.end())
        return columns;
    const int further = std::max(series, 1) - 1;
    for (ColumnInfo& column : columns)
        if (column.head == kEachRow && column.index > first->index)
            column.index += further;
    first->count += further;
    return columns;
}

namespace detail {

COLORREF ParseHexColor(const CString& text) {
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    if (std::sscanf(text, "#%2x%2x%2x", &red, &green, &blue) != 3)
        return 0;
    return RGB(red, green, blue);
}

std::string ShowHexColor(COLORREF color) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
    return text;
}

std::string ShowNumber(double value) {
    constexpr int kDecimals = 6;
    std::string text = FormatFixed(value, kDecimals).GetString();
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text;
}

} // namespace detail

} // namespace melkar
