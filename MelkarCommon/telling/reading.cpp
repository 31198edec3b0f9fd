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

/// Of a character of U+3000 to U+9FFF or of full width, by its first byte: kana, Han and their signs.
bool BeginsWide(char byte) {
    const auto lead = static_cast<unsigned char>(byte);
    return (lead >= 0xE3 && lead <= 0xE9) || lead == 0xEF;
}

bool EndsWide(const std::string& utf8) {
    constexpr std::size_t kBytes = 3;
    return utf8.size() >= kBytes && BeginsWide(utf8[utf8.size() - kBytes]);
}

} // namespace

/// A hyphen before a line feed is there for that.
std::string OnOneLine(const std::string& text) {
    std::string line;
    bool isPending = false; // a blank, once more follows
    bool isBroken = false;  // within a word
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char letter = text[at];
        if (letter == '\n')
            isBroken = isBroken || line.ends_with('-') || (EndsWide(line) && !isPending);
        if (letter == '\n' && line.ends_with('-'))
            line.pop_back();
        if (letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t') {
            isPending = true;
            continue;
        }
        if (isPending && !line.empty() && !(isBroken && (!EndsWide(line) || BeginsWide(letter))))
            line += ' ';
        isPending = isBroken = false;
        line += letter;
    }
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

std::vector<const ShownItem*> EntriesOf(const Contents& contents) {
    std::vector<int> figures(contents.series.size());
    for (const ShownItem& item : contents.items)
        for (const ShownFigure& figure : item.figures)
            ++figures[static_cast<std::size_t>(figure.series)];
    const bool isRow = std::any_of(figures.begin(), figures.end(), [](int count) { return count > 1; });
    std::vector<const ShownItem*> entries;
    for (const ShownItem& item : contents.items) {
        const bool isBeside =
            isRow && item.figures.size() == 1 && figures[static_cast<std::size_t>(item.figures.front().series)] == 1;
        if (!isBeside)
            entries.push_back(&item);
    }
    return entries;
}

std::string CaptionOf(const ShownItem& item, const std::vector<const ShownItem*>& entries) {
    const std::string caption = OnOneLine(item.caption);
    return caption.empty() ? std::to_string(std::find(entries.begin(), entries.end(), &item) - entries.begin() + 1)
                           : caption;
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
    const std::vector<const ShownItem*> entries = EntriesOf(contents);
    std::vector<ToldFigure> figures;
    for (const ShownItem& item : contents.items)
        if (const ShownFigure* figure = FigureOfSeries(item, series); figure && Counts(item))
            figures.push_back({OnOneLine(figure->text), figure->value, CaptionOf(item, entries)});
    return figures;
}

std::vector<ToldFigure> SumsOf(const Contents& contents) {
    const std::vector<const ShownItem*> entries = EntriesOf(contents);
    std::vector<ToldFigure> sums;
    for (const ShownItem& item : contents.items)
        if (Counts(item))
            sums.push_back({SumText(item), item.value, CaptionOf(item, entries)});
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
