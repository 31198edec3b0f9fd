#include <MelkarCommon/key_reference.h>

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/declarative/graph_base.h>
#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/quadrant/square_graph.h>
#include <MelkarCommon/reports/report.h>
#include <MelkarCommon/reports/report_header.h>

namespace melkar {

namespace {

const char* TypeName(KeyType type) {
    switch (type) {
    case KeyType::Text:
        return "text";
    case KeyType::Message:
        return "text; ` __n__ ` breaks the line";
    case KeyType::Number:
        return "number";
    case KeyType::Switch:
        return "0 or 1";
    case KeyType::TrueWord:
        return "`true` or anything else";
    case KeyType::Real:
        return "number with decimals";
    case KeyType::Color:
        return "red,green,blue";
    case KeyType::Point:
        return "x,y";
    }
    return "";
}

std::string Row(const KeyInfo& key) {
    return std::string("| ") + (key.section == KeySection::Common ? "COMMON" : "own") + " | `" + key.name + "` | " +
           TypeName(key.type) + " | " + FallbackOf(key) + " | " + key.meaning + " |\n";
}

} // namespace

std::vector<ClassKeys> AllProfileKeys() {
    return {CGraph::ProfileKeys(),       CBarGraph::ProfileKeys(),
            CLineGraph::ProfileKeys(),   CExpenditureGraph::ProfileKeys(),
            CSimulation::ProfileKeys(),  CCircadianGraph::ProfileKeys(),
            CCircleGraph::ProfileKeys(), CBMIGraph_Base::ProfileKeys(),
            CHimandGraph::ProfileKeys(), CSquareGraph::ProfileKeys(),
            CGraphBase::ProfileKeys(),   CCircleGraphBase::ProfileKeys(),
            CFixedText::ProfileKeys(),   CReport::ProfileKeys(),
            CReportHeader::ProfileKeys()};
}

std::string KeyReference() {
    std::string page = "# Profile keys\n\n"
                       "The keys of `graph.cnf`, class by class; a class also reads those of its base classes. \"own\" "
                       "is the section that the graph was made with. `%d` counts from 0.\n";
    for (const ClassKeys& one : AllProfileKeys()) {
        page += std::string("\n## ") + one.className + "\n\n| Section | Key | Value | Default | Meaning |\n" +
                "|---|---|---|---|---|\n";
        for (const KeyInfo& key : one.keys)
            page += Row(key);
    }
    return page;
}

} // namespace melkar
