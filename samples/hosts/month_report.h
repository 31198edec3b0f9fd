#pragma once

#include "printed_weeks.h"

#include <MelkarCommon/reports/graph_header.h>
#include <MelkarCommon/reports/report.h>

#include <memory>
#include <string>
#include <vector>

// What a host writes to print a report: the pages of a person's month. `CReport` opens the printer and divides a page
// into three bands; what stands in them is decided here, by the number of the page.
//
//   first        heading, charts of the month (as many as the page is high for), gauges
//   then         heading, the charts that are left
//   at the end   heading, the sheets of the days
//
// The data files lie in one directory, under the names that the .cpp lists. A file that isn't there is looked for in
// the directory above, where files without words are for all languages.
class CMonthReport : public CReport {
public:
    CMonthReport(char* printer, int paper, int orientation, char* section, const char* dataDirectory,
                 const char* headerFile);

    // Prints all pages. Returns how many; 0 if the printer didn't take them: then the log says why.
    int Print();

    // Wider bands than the library's: a chart of a month needs the room.
    int CalcRects() override;
    int DrawHeader() override;
    int DrawGraphs() override;
    int DrawFooter() override;

private:
    std::string DataFile(const char* name) const;
    CRect SheetArea() const;
    int ChartPages() const;
    void DrawPeriod(int top);
    void DrawCharts();
    void DrawSheets();
    void DrawGauges();
    void Write(CRect box, const CString& text, int size, unsigned format) const;

    CGraphHeader m_header;
    std::unique_ptr<CPrintedWeeks> m_weeks;
    std::string m_weekFile;
    std::vector<CPrintedWeeks::Sheet> m_sheets;
    CString m_pageLabel;
    CString m_obesityLabel;
    int m_page = 0; // from 0
    int m_pages = 0;
};
