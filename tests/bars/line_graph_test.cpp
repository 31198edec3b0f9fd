#include "chart_fixture.h"

#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/bars/scale.h>

#include <gmock/gmock.h>

#include <cmath>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class OpenLine : public Open<CLineGraph> {
public:
    using Open<CLineGraph>::Open;
    using CLineGraph::m_bLineMeasure, CLineGraph::m_crLine, CLineGraph::m_dChartLineInterval;
    using CLineGraph::m_dChartLineMax, CLineGraph::m_dChartLineMin, CLineGraph::m_nChartLineMaxBig;

    void SetLines(const std::vector<const char*>& values) {
        m_saLineValues.RemoveAll();
        for (const char* value : values)
            m_saLineValues.Add(value);
    }
};

constexpr std::string_view kFourDays = "head\nhead\n0,1/1,1\n0,1/2,1\n0,1/3,1\n0,1/4,1\n";

// In kWideArea a box is 45 wide; of four days the dots stand at x = 285, 510, 735 and 960, with a radius of 4.
class LineGraph : public ChartTest {
protected:
    LineGraph() { Profile("CHARTLINEMIN=60\nCHARTLINEMAX=80\nCHARTLINEINTERVAL=5"); }

    void Profile(const std::string& scale) {
        WriteProfile("LINESCOLOR0_RGB=7,0,0\nVLINEAXSLABEL=kg\nCHARTLINEMAX_BIG=200\n" + scale);
    }
    OpenLine MakeLine() { return {nullptr, m_record, "STEPS", nullptr, nullptr, nullptr}; }
    /// y of each day's value, drawn on the scale of the profile.
    std::vector<int> Heights(const std::vector<const char*>& values) {
        OpenLine graph = MakeLine();
        graph.SetLines(values);
        DrawRecorded(graph, kFourDays, kWideArea);
        std::vector<int> tops;
        for (int i = 0; i < graph.m_oaLineRects.GetSize(); ++i)
            tops.push_back(graph.m_oaLineRects[i]->top);
        return tops;
    }
};

TEST_F(LineGraph, PlacesValuesOnTheRightScale) {
    EXPECT_THAT(Heights({"60", "80", "67.3", "59"}), ElementsAre(425, 125, 425 - 109, 425));
    EXPECT_THAT(Heights({"81", "nan", "inf", "-inf"}), ElementsAre(125, 425, 125, 425));
    Profile("CHARTLINEMIN=70\nCHARTLINEMAX=70");
    EXPECT_THAT(Heights({"69", "70", "71", "x"}), ElementsAre(425, 425, 125, 425)) << "no range: on the clamps";
}

TEST_F(LineGraph, DotsAndStrokesNeedStatusAndEntry) {
    const struct Case {
        const char *why, *statuses;
        std::vector<const char*> values;
        const char* dots;
        const char* strokes; ///< the day at whose dot one begins
    } cases[] = {
        {"another status breaks on both sides", "0010", {"60", "80", "70", "60"}, "013", "1"},
        {"any status but 0", "1234", {"60", "80", "70", "60"}, "", ""},
        {"no entries at all", "0000", {}, "", ""},
        {"entries for the first days only", "0000", {"60", "80"}, "01", "1"},
    };
    const auto daysOf = [](const std::vector<std::string>& lines, std::string_view verb) {
        std::string days;
        for (const std::string& line : lines)
            days += std::to_string((std::stoi(line.substr(verb.size())) - 285) / 225);
        return days;
    };
    for (const Case& c : cases) {
        OpenLine graph = MakeLine();
        graph.SetLines(c.values);
        std::string file = "head\nhead\n";
        for (int day = 0; day < 4; ++day)
            file.append({c.statuses[day]}).append(",date,1\n");
        const auto lines = DrawRecorded(graph, file, kWideArea);
        EXPECT_EQ(daysOf(LinesWith(lines, "ellipse ", " 4x4 fill #070000"), "ellipse "), c.dots) << c.why;
        EXPECT_EQ(daysOf(LinesWith(lines, "line ", "#070000 w1"), "line "), c.strokes) << c.why;
    }
}

TEST_F(LineGraph, ScaleAtTheRight) {
    const struct Case {
        const char *why, *scale;
        int coach;
        const char* labels;
    } cases[] = {
        {"five pixels right of the canvas, centred on its height", "MIN=60 MAX=80 INTERVAL=5", 0,
         "60@413 65@338 70@263 75@188 80@113"},
        {"coach mode leaves the bottom and every second label out", "MIN=60 MAX=80 INTERVAL=5", 1, "65@338 75@188"},
        {"no interval: steps of 10; 10 x 300 / 19 is 157", "MIN=60 MAX=79", 0, "60@413 70@256"},
    };
    for (const Case& c : cases) {
        std::istringstream words(c.scale);
        std::string scale;
        for (std::string word; words >> word;)
            scale += "CHARTLINE" + word + "\n";
        Profile(scale);
        OpenLine graph = MakeLine();
        graph.m_bCoach = c.coach;
        EXPECT_EQ(TextsAt(DrawRecorded(graph, kFourDays, kWideArea), 1078), c.labels) << c.why;
    }
}

} // namespace
