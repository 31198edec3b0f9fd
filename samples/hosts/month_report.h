#pragma once

#include "letters.h"
#include "page_flow.h"
#include "paper_sheets.h"

#include <MelkarCommon/frame/report_contents.h>
#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/reports/graph_header.h>
#include <MelkarCommon/reports/report.h>
#include <MelkarCommon/telling/words.h>

#include <memory>
#include <string>
#include <vector>

// The heading block; the report takes its units, too.
class CMonthHeader : public CGraphHeader {
public:
    CMonthHeader(char* section, const Letters& letters) : CGraphHeader(section) {
        m_nHeaderSize = letters.Of(m_nHeaderSize);
    }
    using CReportHeader::m_strCalUnit;
    using CReportHeader::m_strStepUnit;
};

// What a host writes to print a report: the pages of a person's month. `CReport` opens the printer and runs the pages;
// what stands on them is decided here.
//
//   header   the heading block, on every page
//   graphs   boxes that flow over the pages: the figures of the month with the gauges, the charts, the sheets of days
//   footer   the number of the page
//
// Its PDF files can be read aloud: they have a title, headings, paragraphs and figures with descriptions, and
// bookmarks.
//
// The data files lie in one directory, under the names that the .cpp lists. A file that isn't there is looked for in
// the directory above, where files without words are for all languages.
class CMonthReport : public CReport {
public:
    CMonthReport(char* printer, int paper, int orientation, char* section, const char* dataDirectory,
                 const char* headerFile);

    // Prints all pages. Returns how many; 0 if the printer didn't take them: then the log says why. What stands on them
    // is told to `shown`, if there is one.
    int Print(melkar::ShownReport* shown = nullptr);

    // Other bands than the library's: an even margin, the rest for the boxes.
    int CalcRects() override;
    int DrawHeader() override;
    int DrawGraphs() override;
    int DrawFooter() override;

private:
    std::string DataFile(const char* name) const;
    void LayOutBoxes();
    void DrawBox(int box, const CRect& area);
    void DrawSummary(const CRect& area);
    void DrawFigures(const CRect& area);
    template <class Gauge>
    void DrawGauge(const char* section, const CString& label, const CRect& area, const char* file);
    void WriteAs(PageRole role, const CRect& box, const CString& text) const;
    void Write(CRect box, const CString& text, unsigned format) const;
    std::string Title() const;
    void Tell(melkar::Contents shown, const CString& label) const;
    melkar::ShownPage* PageShown() const;

    Letters m_letters;
    CMonthHeader m_header;
    std::unique_ptr<CPaperSheets> m_sheets;
    CString m_pageLabel;
    CString m_obesityLabel;
    CString m_title;
    melkar::DescriptionWords m_words;
    std::vector<FlowPlace> m_places; // of the boxes, in the graphs band
    melkar::ShownReport* m_shown = nullptr;
    int m_page = 0; // from 0
    int m_pages = 0;
};
