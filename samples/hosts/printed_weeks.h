#pragma once

#include <MelkarCommon/circadian/weekly_circadian.h>

// Whole weeks of a file that holds several. The library prints the week in which a file ends; a host that keeps all its
// weeks together says which of them are whole: those whose eighth line was read.
class CPrintedWeeks : public CWeeklyCircadian {
public:
    using CWeeklyCircadian::CWeeklyCircadian;

    long ReadWeekDataFile(char* file, int page) override;
    long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal, int totalCal,
                    double time, CStringArray* events, CStringArray* levels, double* intensity, int toroken,
                    float exercise) override;

private:
    int m_weeksRead = 0; // in the last reading
};
