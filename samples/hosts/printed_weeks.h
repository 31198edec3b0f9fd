#pragma once

#include <MelkarCommon/circadian/weekly_circadian.h>

#include <vector>

// The sheets of several weeks in one file. The library prints the week in which a file ends; a host that keeps all its
// weeks together says which of them are whole: those whose eighth line was read.
class CPrintedWeeks : public CWeeklyCircadian {
public:
    using CWeeklyCircadian::CWeeklyCircadian;

    struct Sheet {
        int week; // from 0
        int day;  // Monday 1 to Sunday 7
    };
    // All days in a file, in their order; none if it can't be read.
    std::vector<Sheet> Sheets(char* file);
    // Draws one of them, as large as suits the page. `DrawWeek` draws seven.
    void DrawSheet(const CRect& area, char* file, const Sheet& sheet);

    long ReadWeekDataFile(char* file, int page) override;
    long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal, int totalCal,
                    double time, CStringArray* events, CStringArray* levels, double* intensity, int toroken,
                    float exercise) override;

private:
    int m_weeksRead = 0; // whole ones
    int m_weekAtHand = -1;
};
