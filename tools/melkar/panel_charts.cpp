#include "panel_charts.h"

#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace melkar::tool {
namespace {

constexpr float kLeastShare = 0.01F; ///< of a slice that is shown
constexpr UINT kTextFormat = DT_VCENTER;
constexpr int kTextMargin = 8;

/// What all panels have in common: they read nothing themselves.
template <class Graph> class PanelChart : public Graph, public Chart {
public:
    using Graph::Graph;

    long Read(char*) override { return kOk; }
    void Bind(const Surfaces& surfaces) override {
        this->Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        this->SetDirectOutput(surfaces.isDirect);
    }
    long Paint(const CRect& area, char* path) override { return Graph::Draw(area, path); }
};

class Panel final : public PanelChart<CGraphBase> {
public:
    explicit Panel(const ChartOptions& options)
        : PanelChart(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {
        char profile[] = "..\\conf\\graph.cnf";
        ReadIniFile(profile);
    }
};

/// "#RRGGBB" as a colour; black for anything else.
COLORREF HexColor(const CString& text) {
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    if (std::sscanf(text, "#%2x%2x%2x", &red, &green, &blue) != 3)
        return 0;
    return RGB(red, green, blue);
}

class Plots final : public PanelChart<CPlotGraph> {
public:
    explicit Plots(const ChartOptions& options)
        : PanelChart(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {}

    long Read(char* path) override {
        std::ifstream file(path);
        if (!file)
            return kNoFile;
        std::string row;
        std::getline(file, row);
        while (std::getline(file, row))
            AddRow(CsvRow(row.c_str()));
        return PlotSize() > 0 ? kOk : kNoDays;
    }

    /// The library leaves the points on the working surface; a host on the screen copies them out.
    long Paint(const CRect& area, char* path) override {
        char none[] = "";
        const long result = Draw(area, path, none);
        if (result == kOk)
            BitBlt();
        return result;
    }

private:
    void AddRow(const CsvRow& row) {
        enum { X, Y, Size, Color, Connect };
        AddPlot(CPlot(static_cast<float>(ToDouble(row.Field(X))), static_cast<float>(ToDouble(row.Field(Y))),
                      row.IntField(Size), HexColor(row.Field(Color)), row.IntField(Connect)));
    }
};

class Slices final : public PanelChart<CCircleGraphBase> {
public:
    explicit Slices(const ChartOptions& options)
        : PanelChart(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr, kLeastShare) {}

    long Read(char* path) override {
        std::ifstream file(path);
        if (!file)
            return kNoFile;
        int index = 0;
        for (std::string value; std::getline(file, value); ++index)
            SetValue(static_cast<float>(ToDouble(value.c_str())), index);
        return index > 0 ? kOk : kNoDays;
    }
};

class Text final : public PanelChart<CFixedText> {
public:
    explicit Text(const ChartOptions& options)
        : PanelChart(nullptr, nullptr, options.section.c_str(), options.key.c_str(), nullptr, nullptr, nullptr,
                     kTextFormat, kTextMargin) {}
};

} // namespace

std::unique_ptr<Chart> MakePanel(const ChartOptions& options) { return std::make_unique<Panel>(options); }
std::unique_ptr<Chart> MakePlot(const ChartOptions& options) { return std::make_unique<Plots>(options); }
std::unique_ptr<Chart> MakePie(const ChartOptions& options) { return std::make_unique<Slices>(options); }
std::unique_ptr<Chart> MakeText(const ChartOptions& options) { return std::make_unique<Text>(options); }

} // namespace melkar::tool
