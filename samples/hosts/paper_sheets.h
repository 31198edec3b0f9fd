#pragma once

#include "letters.h"

#include <MelkarCommon/circadian/weekly_circadian.h>

#include <array>
#include <climits>
#include <vector>

// The sheet of a day as it stands on paper, where several share a page: its letters are as small beside the sheet as
// they are on a wide screen, the summary keeps between two lines of the scale, and the remark stands beside the date.
class CPaperDay : public CCircadianGraph {
public:
    CPaperDay(HDC page, const char* section, const Letters& letters);
    void WriteMessage() override;
    CString Date() const; // which a sheet without records doesn't paint

private:
    void WriteRemark();

    Letters m_letters;
};

// The days of a weekly print file, however many weeks it holds, one by one. A host that prints whole weeks calls
// `DrawWeek`; this one spreads days over pages. The file is read some hundred days at a time, so that a report of any
// length takes the memory of a short one.
class CPaperSheets : public CWeeklyCircadian {
public:
    CPaperSheets(HDC page, const char* section, std::string file, const Letters& letters);

    int Count() const { return m_count; }                     // days in the file; 0 if it can't be read
    melkar::Contents DrawSheet(const CRect& area, int sheet); // what it shows; nothing if there is no such day
    CString Date() const { return m_sheet.Date(); }           // of the sheet drawn last

    long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal, int totalCal,
                    double time, CStringArray* events, CStringArray* levels, double* intensity, int toroken,
                    float exercise) override;

private:
    struct Day {
        double from, to; // of the moderate class
        CString date;
        int status, steps, actCal, totalCal;
        double time;
        CStringArray events, levels;
        std::array<double, CCircadianGraph::kValues> intensity;
        int toroken;
        float exercise;
    };

    void ReadFrom(int sheet);

    CPaperDay m_sheet;
    std::string m_file;
    std::vector<Day> m_days; // at hand, from day `m_first` on
    int m_first = INT_MAX;
    int m_count = 0;
};
