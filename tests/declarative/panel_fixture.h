#pragma once

#include <MelkarCommon/declarative/graph_base.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/platform/surface.h>
#include <support/temp_workdir.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Panels on a surface that records, whose text has fixed metrics: a font of 20 has characters of 10 x 20.
/// The panel is (100, 50) to (500, 350); its graph area (160, 100) to (440, 300), 280 x 200.

constexpr CRect kPanel(100, 50, 500, 350);

class PanelTest : public testing::Test {
protected:
    PanelTest() { WriteProfile(""); }
    ~PanelTest() override {
        DeleteDC(m_record);
        EXPECT_EQ(LiveObjectCount(), m_liveBefore) << "every test hands back its surfaces and drawing objects";
    }

    /// Section PANEL; `keys` count before those of the plain panel.
    void WriteProfile(std::string_view keys) {
        m_files.Write("conf/graph.cnf", "[COMMON]\nFONT=Fixed\n[PANEL]\n" + std::string(keys) +
                                            "\nBASE_RGB=10,10,10\nGRAPH_OFFSET_LT=60,50\nGRAPH_OFFSET_RB=60,50\n"
                                            "GRAPH_BK_RGB=20,20,20\nGRAPH_GRID_RGB=30,30,30\n");
    }

    template <class Graph, class... More> Graph Make(More... more) {
        return {nullptr, m_record, "PANEL", nullptr, nullptr, nullptr, more...};
    }

    /// What a drawing left on the record so far, a line an operation.
    std::vector<std::string> Recorded() const {
        std::istringstream record(GetRecording(m_record));
        std::vector<std::string> lines;
        for (std::string line; std::getline(record, line);)
            lines.push_back(line);
        return lines;
    }

    std::vector<std::string> DrawRecorded(CGraphBase& graph, CRect area = kPanel) {
        char none[] = "";
        graph.SetDirectOutput(1);
        EXPECT_EQ(graph.Draw(area, none), 0);
        return Recorded();
    }

    static std::vector<std::string> LinesWith(const std::vector<std::string>& lines, std::string_view prefix) {
        std::vector<std::string> found;
        for (const std::string& line : lines)
            if (line.starts_with(prefix))
                found.push_back(line);
        return found;
    }

    TempWorkdir m_files;
    std::size_t m_liveBefore = LiveObjectCount();
    HDC m_record = CreateRecordingSurface(600, 400);
};
