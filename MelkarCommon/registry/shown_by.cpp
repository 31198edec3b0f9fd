#include <MelkarCommon/registry/shown_by.h>

#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/reports/graph_header.h>

namespace melkar {

namespace {

/// Of the row itself, or of the nearest base that has one.
const char* KindOf(const KindRow& row) {
    const KindRow* named = &row;
    while (*named->kind == '\0' && *named->base != '\0')
        named = FindClass(named->base);
    return named->kind;
}

} // namespace

/// A base stands before what derives from it, so the last row that takes the graph is nearest to it.
Contents ShownBy(const CGraph& graph) {
    const auto& rows = Catalogue();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        if (row->shown)
            if (std::optional<Contents> contents = row->shown(graph)) {
                contents->kind = KindOf(*row);
                return *std::move(contents);
            }
    return {};
}

std::vector<Contents> ShownBy(const CWeeklyCircadian& week) {
    std::vector<Contents> sheets;
    for (const CCircadianGraph& day : week.m_Day)
        if (day.HasDrawn())
            sheets.push_back(ShownBy(static_cast<const CGraph&>(day)));
    return sheets;
}

Contents ShownBy(const CGraphHeader& block) { return block.Shown(); }

} // namespace melkar
