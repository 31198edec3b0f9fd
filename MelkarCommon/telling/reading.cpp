#include <MelkarCommon/telling/reading.h>

#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace melkar {

namespace {

int DecimalsOf(const std::string& text) {
    const auto point = text.find('.');
    if (point == std::string::npos)
        return 0;
    const auto end = text.find_first_not_of("0123456789", point + 1);
    return static_cast<int>((end == std::string::npos ? text.size() : end) - point - 1);
}

double SumOf(const ShownItem& item) {
    return std::accumulate(item.figures.begin(), item.figures.end(), 0.0,
                           [](double sum, const ShownFigure& figure) { return sum + figure.value; });
}

} // namespace

/// A hyphen before a line feed is there for that.
std::string OnOneLine(const std::string& text) {
    std::string line;
    bool isBroken = false; // within a word
    for (const char letter : text) {
        const bool isBlank = letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
        if (letter == '\n' && line.ends_with('-')) {
            line.pop_back();
            isBroken = true;
        }
        if (!isBlank)
            line += letter;
        else if (!line.empty() && line.back() != ' ' && !isBroken)
            line += ' ';
        isBroken = isBroken && isBlank;
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

std::string TitleOf(const Contents& contents, const DescriptionWords& words) {
    const std::string title = OnOneLine(contents.title);
    return title.empty() ? words.Say(words.m_strNameless) : title;
}

std::string NameOfSeries(const Contents& contents, std::size_t series, const DescriptionWords& words) {
    std::string name = OnOneLine(contents.series[series].name);
    if (name.empty() && contents.series.size() == 1)
        name = OnOneLine(contents.unit);
    if (!name.empty())
        return name;
    return contents.series.size() == 1 ? words.Say(words.m_strFigureHead)
                                       : words.SayCount(words.m_strSeries, static_cast<long>(series + 1));
}

bool IsRow(const Contents& contents) {
    const auto isBelow = [](const ShownAxis& axis) { return axis.side == AxisSide::Bottom; };
    const auto isMeasuredThere = [](const ShownSeries& series) { return series.axis == AxisSide::Bottom; };
    return std::any_of(contents.axes.begin(), contents.axes.end(), isBelow) &&
           std::none_of(contents.series.begin(), contents.series.end(), isMeasuredThere);
}

/// Of a stack an item's number is the sum of several figures.
bool IsStack(const Contents& contents) {
    const auto isSum = [](const ShownItem& item) {
        return item.figures.size() > 1 && std::abs(item.value - SumOf(item)) <= 1e-9 * std::abs(item.value);
    };
    const auto hasParts = [](const ShownItem& item) { return item.figures.size() > 1; };
    return std::any_of(contents.items.begin(), contents.items.end(), hasParts) &&
           std::all_of(contents.items.begin(), contents.items.end(),
                       [&](const ShownItem& item) { return !hasParts(item) || isSum(item); });
}

bool Counts(const ShownItem& item) { return HasFigures(ToDayStatus(item.status)) && !item.isMissing; }

bool IsExcluded(const ShownItem& item) { return IsExcluded(ToDayStatus(item.status)); }
bool IsWithout(const ShownItem& item) { return !IsExcluded(item) && !Counts(item); }
bool IsBeyond(const ShownItem& item) {
    return Counts(item) && std::any_of(item.figures.begin(), item.figures.end(),
                                       [](const ShownFigure& figure) { return figure.isClipped; });
}

std::string NoteOn(const ShownItem& item, const DescriptionWords& words) {
    return IsExcluded(item)  ? words.Say(words.m_strExcludedNote)
           : IsWithout(item) ? words.Say(words.m_strMissingNote)
           : IsBeyond(item)  ? words.Say(words.m_strBeyondNote)
                             : "";
}

const ShownFigure* FigureOfSeries(const ShownItem& item, std::size_t series) {
    for (const ShownFigure& figure : item.figures)
        if (figure.series == static_cast<int>(series))
            return &figure;
    return nullptr;
}

std::string SumText(const ShownItem& item) {
    if (!item.text.empty())
        return item.text;
    int decimals = 0;
    for (const ShownFigure& figure : item.figures)
        decimals = std::max(decimals, DecimalsOf(figure.text));
    return FormatFixed(item.value, decimals).GetString();
}

std::vector<ToldFigure> FiguresOf(const Contents& contents, std::size_t series) {
    std::vector<ToldFigure> figures;
    for (const ShownItem& item : contents.items)
        if (const ShownFigure* figure = FigureOfSeries(item, series); figure && Counts(item))
            figures.push_back({OnOneLine(figure->text), figure->value, OnOneLine(item.caption)});
    return figures;
}

std::vector<ToldFigure> SumsOf(const Contents& contents) {
    std::vector<ToldFigure> sums;
    for (const ShownItem& item : contents.items)
        if (Counts(item))
            sums.push_back({SumText(item), item.value, OnOneLine(item.caption)});
    return sums;
}

std::string MeanOf(const std::vector<ToldFigure>& figures) {
    double sum = 0;
    int decimals = 0;
    for (const ToldFigure& figure : figures) {
        sum += figure.value;
        decimals = std::max(decimals, DecimalsOf(figure.text));
    }
    return FormatFixed(sum / static_cast<double>(figures.size()), decimals).GetString();
}

} // namespace melkar
