#include <MelkarCommon/gauges/bmi_graph_base.h>

#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/gauges/gauge_layout.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>

struct CBMIGraph_Base::KeyRows : melkar::Keys<CBMIGraph_Base> {
    static constexpr Row rows[] = {
        // The frame's keys of the title once more: another profile may be read in with those of this class.
        Text<melkar::In<&G::m_Title, &CText::m_strText>>(Own, "TITLELABEL", "title").Example("Body mass index"),
        Color<melkar::In<&G::m_Title, &CText::m_crColor>>(Own, "TITLECOLOR_RGB", "title"),
        Number<melkar::In<&G::m_Title, &CText::m_nSize>>(Own, "TITLESIZE", 0, "title, points").Example("11"),
        Number<melkar::In<&G::m_Title, &CText::m_dwCharSet>>(Common, "CHARSET", 0, "character set of the title"),
        Text<melkar::In<&G::m_Title, &CText::m_strFontName>>(Common, "FONT", "face of the title")
            .Example("DejaVu Sans"),
        Colors<&G::m_crClass, &G::m_nClassCount>(Own, "CLASSCOLOR%d_RGB", "value class, from the lowest"),
        Decimals<&G::m_dClassMax, &G::m_nClassCount>(Own, "CLASSMAXVALUE%d",
                                                     "first figure above the class, with decimals")
            .Figure(),
        Texts<&G::m_saClassCaption, &G::m_nClassCount>(Own, "CLASSCAPTION%d", "caption of the class"),
        Number<&G::m_nMin>(Own, "MIN", 0, "low end of the scale"),
        Number<&G::m_nMax>(Own, "MAX", 0, "high end of the scale; upper bound of the sixth class").TopFrom("MIN"),
    };
};

struct CBMIGraph_Base::File : melkar::Columns<CBMIGraph_Base> {
    static constexpr Form form =
        Form{1, "figure"}
            .Limit(melkar::kRowLimit)
            .Note("A file of one row gives the figure in that; rows behind the second aren't read.");
    static constexpr Row rows[] = {
        Figure<&G::m_strValue, &G::m_dValue>(0, "figure").Means("shown as it is written").Needed().Example("22.4"),
    };
};

CBMIGraph_Base::CBMIGraph_Base(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraph(window, dc, section, shared, second, balloon) {
    CBMIGraph_Base::ReadIniFile(GraphProfile());
}

long CBMIGraph_Base::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    m_Title.m_nWeight = FW_BOLD;
    m_dClassMax[std::clamp(m_nClassCount, 1, kMostClasses) - 1] = m_nMax;
    return 0;
}

melkar::ClassKeys CBMIGraph_Base::ProfileKeys() { return {"CBMIGraph_Base", melkar::InfoOf(KeyRows::rows)}; }

COLORREF CBMIGraph_Base::ClassColor(int cls) const { return m_crClass[std::clamp(cls, 0, kMostClasses - 1)]; }

melkar::DataTables CBMIGraph_Base::DataFiles() { return {melkar::TableOf<File>()}; }

long CBMIGraph_Base::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "CBMIGraph_Base::ReadDataFile", path, [this](melkar::DataFile& file) {
        melkar::TakeRow<File>(*this, file.Head(File::form.headLimit));
        if (const melkar::CsvRow* line = file.Next(File::form.rowLimit))
            melkar::TakeRow<File>(*this, *line);
        const auto classes = static_cast<std::size_t>(std::clamp(m_nClassCount, 0, kMostClasses));
        m_nClass = melkar::ClassOf(m_dValue, m_nMin, m_nMax, {m_dClassMax, classes}, m_nClass);
        return melkar::kOk;
    });
}

// On a working surface the rectangle of the graph stays at the surface's origin, where the frame has put it: the figure
// shows wherever the picture lands. Under direct output it is the one given.
struct CBMIGraph_Base::Cycle : melkar::Steps<CBMIGraph_Base> {
    static constexpr Step steps[] = {Do<&G::BeginCycle>, Do<&G::ReadDataFile>, Do<&G::DrawCanvas>, Do<&G::DrawValue>,
                                     Do<&G::DrawTitle>};
};

long CBMIGraph_Base::Draw(CRect area, char* path) {
    melkar::RunCycle(*this, Cycle::steps, area, path);
    return melkar::kOk;
}

long CBMIGraph_Base::DrawNoRecordsMessage() { return 0; }

long CBMIGraph_Base::DrawCanvas() {
    DrawRectangle(m_hMemDC, m_rcGraph, m_crCanvas, m_crPen, 1);
    SetBkMode(m_hMemDC, TRANSPARENT); // left to the figure of a derived class
    m_rcCanvas = m_rcGraph;
    return 0;
}

long CBMIGraph_Base::DrawValue() { return 0; }
