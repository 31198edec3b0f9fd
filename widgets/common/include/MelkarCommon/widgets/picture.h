#pragma once

#include <MelkarCommon/MelkarCommon.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// @file
/// What a widget shows: any graph, or something that behaves like one.

namespace melkar {

/// Where the looks of a picture stand.
struct ChartLooks {
    std::string section;   ///< of the profile
    std::string directory; ///< from which profile and log are found, as `HostDirectory`; empty: that of the thread
};

/// Surfaces that a widget lends to a picture.
struct LentSurfaces {
    HDC shared = nullptr;  ///< receives the picture; on a page it is painted on
    HDC balloon = nullptr; ///< keeps the clean picture below a balloon; null on a page
    bool isPage = false;   ///< paint onto `shared` itself
};

/// What a widget shows. Results are those of graphs (frame/results.h). All points and areas are units of the widget.
class ChartPicture {
public:
    virtual ~ChartPicture() = default;

    virtual void Bind(const LentSurfaces& surfaces) = 0; ///< what to draw on from now on
    virtual long Read(char* path) = 0;                   ///< tries the data file, before the first `Draw` with it
    virtual long Draw(CRect area, char* path) = 0;       ///< reads and draws; of an empty path: what it holds
    virtual std::vector<Contents> Shown() const = 0;     ///< what the last `Draw` shows, as `ShownBy`

    virtual bool HasBalloons() const { return false; } ///< whether `Hover` paints; if not, the toolkit tells
    virtual long DayAt(CPoint) { return -1; }          ///< index of the day there, for pictures with balloons; or -1
    virtual bool Hover(CPoint) {
        return false;
    } ///< the clean picture, and a balloon there. @return whether one is there
};

/// Makes a picture with those looks, at the beginning and whenever looks change; within their `HostDirectory`.
using PictureMaker = std::function<std::unique_ptr<ChartPicture>(const ChartLooks& looks)>;

/// Makes a graph, filled if it has no data file: `MakeGraph<CStepGraph>`, `FindKind("steps")->make`, or a host's own.
/// Surfaces are null: they are lent by `Initialize` later.
using GraphMaker = std::function<std::unique_ptr<CGraph>(HWND window, HDC dc, const char* section, HDC shared,
                                                         HDC second, HDC balloon)>;

/// Any graph.
class GraphPicture : public ChartPicture {
public:
    /// Takes the graph over.
    explicit GraphPicture(std::unique_ptr<CGraph> graph)
        : m_graph(std::move(graph)), m_bars(dynamic_cast<CBarGraph*>(m_graph.get())) {}

    void Bind(const LentSurfaces& surfaces) override {
        // Whatever the view mode, the picture comes to the one surface that is shown.
        m_graph->Initialize(nullptr, surfaces.shared, surfaces.shared, surfaces.shared, surfaces.balloon);
        m_graph->SetDirectOutput(surfaces.isPage);
    }
    long Read(char* path) override { return m_graph->ReadDataFile(path); }
    long Draw(CRect area, char* path) override { return m_graph->Draw(area, path); }
    std::vector<Contents> Shown() const override { return {ShownBy(*m_graph)}; }
    bool HasBalloons() const override { return m_bars != nullptr; }
    long DayAt(CPoint point) override { return m_bars ? m_bars->OnClick(point) : -1; }
    bool Hover(CPoint point) override { return m_bars && m_bars->OnMouseMove(point) >= 0; }

    CGraph& Graph() { return *m_graph; } ///< to change figures or switches of; draw it anew by the widget

private:
    std::unique_ptr<CGraph> m_graph;
    CBarGraph* m_bars; ///< null if it is no chart of bars
};

/// Graphs as pictures.
inline PictureMaker PicturesOf(GraphMaker make) {
    return [make = std::move(make)](const ChartLooks& looks) -> std::unique_ptr<ChartPicture> {
        return std::make_unique<GraphPicture>(make(nullptr, nullptr, looks.section.c_str(), nullptr, nullptr, nullptr));
    };
}

/// What the menu of a widget says; UTF-8, a host's to translate.
struct ChartMenuWords {
    std::string copy = "Copy Picture";    ///< to the clipboard
    std::string savePng = "Save as PNG…"; ///< asks for a file
    std::string saveSvg = "Save as SVG…"; ///< likewise
    std::string savePdf = "Save as PDF…"; ///< likewise
    std::string print = "Print…";         ///< by the toolkit's dialog
    std::string notSaved = "Not saved";   ///< heads the reason of a failure
    std::string noPicture = "No picture"; ///< heads the reason why nothing can be shown
};

} // namespace melkar
