#pragma once

#include <MelkarCommon/declarative/graph_base.h>
#include <frame/host_fixture.h>

/// @file
/// Panels on a surface that records, whose text has fixed metrics: a font of 20 has characters of 10 x 20.
/// The panel is (100, 50) to (500, 350); its graph area (160, 100) to (440, 300), 280 x 200.

constexpr CRect kPanel(100, 50, 500, 350);

class PanelTest : public HostTest {
protected:
    PanelTest() { WriteProfile(""); }

    /// Section OWN; `keys` count before those of the plain panel.
    void WriteProfile(std::string_view keys) {
        m_files.Write("conf/graph.cnf", "[COMMON]\nFONT=Fixed\n[OWN]\n" + std::string(keys) +
                                            "\nBASE_RGB=10,10,10\nGRAPH_OFFSET_LT=60,50\nGRAPH_OFFSET_RB=60,50\n"
                                            "GRAPH_BK_RGB=20,20,20\nGRAPH_GRID_RGB=30,30,30\n");
    }
    /// The panel reads its keys on demand.
    static void ReadProfile(CGraphBase& graph) {
        char profile[] = "..\\conf\\graph.cnf";
        graph.ReadIniFile(profile);
    }
    std::vector<std::string> DrawRecorded(CGraphBase& graph, CRect area = kPanel) {
        return LinesOf(Record(graph, "", area));
    }
};
