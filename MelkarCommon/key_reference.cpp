#include <MelkarCommon/key_reference.h>

#include <MelkarCommon/catalogue.h>
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

std::string KindRow(const GraphClass& graph) {
    std::string tables;
    for (const ClassKeys& one : KeysReadBy(graph))
        tables += std::string(tables.empty() ? "" : ", ") + one.className;
    return std::string("| `") + graph.kind + "` | " + graph.name + " | " + tables + " |\n";
}

/// Whether a readable chart needs the key, with a value that suits; else only the value.
std::string Example(const KeyInfo& key) {
    return std::string("`") + ExampleOf(key) + (key.needed ? "` (needed)" : "`");
}

/// What the key is for, and the switch that it waits for.
std::string Meaning(const KeyInfo& key) {
    return std::string(key.meaning) + (*key.gate ? std::string("; read with `") + key.gate + "`" : "");
}

std::string Row(const KeyInfo& key) {
    return std::string("| ") + (key.section == KeySection::Common ? "COMMON" : "own") + " | `" + key.name + "` | " +
           TypeName(key.type) + " | " + FallbackOf(key) + " | " + Example(key) + " | " + Meaning(key) + " |\n";
}

} // namespace

std::vector<ClassKeys> AllProfileKeys() {
    std::vector<ClassKeys> all;
    for (const GraphClass& graph : Catalogue())
        if (graph.keys)
            all.push_back(graph.keys());
    all.push_back(CReport::ProfileKeys()); // a report draws no graph of its own, so it isn't in the catalogue
    all.push_back(CReportHeader::ProfileKeys());
    return all;
}

std::string KeyReference() {
    std::string page = "# Profile keys\n\n"
                       "The keys of `graph.cnf`, class by class; a class also reads those of its base classes. \"own\" "
                       "is the section that the graph was made with. `%d` counts from 0.\n\n"
                       "| Kind | Class | Reads the keys of |\n|---|---|---|\n";
    for (const GraphClass& graph : Catalogue())
        if (*graph.kind)
            page += KindRow(graph);
    for (const ClassKeys& one : AllProfileKeys()) {
        page += std::string("\n## ") + one.className + "\n\n| Section | Key | Value | Default | Example | Meaning |\n" +
                "|---|---|---|---|---|---|\n";
        for (const KeyInfo& key : one.keys)
            page += Row(key);
    }
    return page;
}

} // namespace melkar
