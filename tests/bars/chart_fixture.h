#pragma once

#include <MelkarCommon/bars/bar_graph.h>
#include <frame/host_fixture.h>

#include <regex>

/// @file
/// Charts of the bar family.
///
/// A chart in `kArea` has its title from 51 to 101 and its canvas at (173, 125) to (1073, 425), 900 x 300:
///   left    100 + 1 (side bar) + 72 (nine characters of the surface's font)
///   top     50 + 50 (title) x 3 / 2
///   right   1092 - 992 / 50
///   bottom  524 - 474 / 20 - 2 x 25 (horizontal label) - trunc(25 x 1.05) (dates)

constexpr CRect kArea(100, 50, 1092, 524);
/// Charts whose right margin is as wide as the left one have the same canvas in this one.
constexpr CRect kWideArea(100, 50, 1146, 524);

/// Section OWN: scale 0 to 1000 by 250, big scale 0 to 5000 by 1000. Colours are all different.
constexpr std::string_view kCommonProfile =
    "[COMMON]\nFONT=Fixed\nCANVASCOLOR_RGB=250,250,250\nBASECOLOR_RGB=200,200,200\nPENCOLOR_RGB=1,2,3\n"
    "BALLOONCOLOR_RGB=255,255,128\nNORECORDS_COLOR_RGB=4,0,0\nNORECORDS_MESSAGE=no __n__ records\n"
    "NODATA_COLOR_RGB=2,0,0\nNODATA_MESSAGE=no data\nEXCLUDE_COLOR_RGB=9,0,0\nEXCLUDE_MESSAGE=excluded\nVALUESIZE=15\n"
    "TARGETSIZE=15\nVMEASURESIZE=15\nMEASURELABELSIZE=15\nHMEASURESIZE=15\nDATESIZE=15\n";
constexpr std::string_view kOwnProfile =
    "TITLELABEL=Steps\nTITLESIZE=30\nTITLECOLOR_RGB=0,0,99\nVAXSLABEL=steps\nHAXSLABEL=Day\nBARSCOLOR_RGB=0,128,0\n"
    "BARSCOLOR2_RGB=0,255,0\nTARGETLABEL=goal\nTARGETCOLOR_RGB=255,0,0\nAVERAGELABEL=mean\nAVERAGECOLOR_RGB=0,0,255\n"
    "BARSCOLOR0_RGB=10,0,0\nBARSCOLOR1_RGB=20,0,0\nCHARTMAX=1000\nCHARTINTERVAL=250\nCHARTMAX_BIG=5000\n"
    "CHARTINTERVAL_BIG=1000\n";

/// Charts of section OWN.
class ChartTest : public HostTest {
protected:
    ChartTest() { WriteProfile(""); }

    /// The profile above with lines of the graph's own section added, which count before the profile's.
    void WriteProfile(std::string_view own) {
        std::string profile(kCommonProfile);
        m_files.Write("conf/graph.cnf", profile.append("[OWN]\n").append(own).append("\n").append(kOwnProfile));
    }

    /// Draws a data file onto a new record. @return its lines, the four rows of a thick
    /// one as the upmost only: "thick 173,322 398 #FF0000 w1 dot 3,3".
    std::vector<std::string> DrawRecorded(CGraph& graph, std::string_view data, CRect area = kArea) {
        static const std::regex kThick(R"(line (-?\d+),(-?\d+) (-?\d+),\2( .*)(\nline \1,.* \3,.*\4){3})");
        return LinesOf(std::regex_replace(Record(graph, data, area), kThick, "thick $1,$2 $3$4"));
    }

    /// "status date figure figure ...|" for each day
    template <class Graph> static std::string Content(const Graph& graph) {
        std::ostringstream text;
        for (int day = 0; day < graph.m_saDates.GetSize(); ++day) {
            text << graph.m_dwaStatus[day] << " " << graph.m_saDates[day].GetString();
            for (int series = 0; series < graph.m_nSeriesCount; ++series)
                text << " " << graph.m_saValues[day * graph.m_nSeriesCount + series].GetString();
            text << "|";
        }
        return text.str();
    }
};
