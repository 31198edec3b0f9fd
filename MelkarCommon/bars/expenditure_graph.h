#pragma once

#include <MelkarCommon/bars/line_graph.h>

/// @file
/// Energy expenditure of days, in two parts.

/// Daily energy expenditure: stacked bars of two series over a band that marks the average intake, with a two-entry
/// legend above the canvas. The scale comes from the data file and is never replaced by the big one.
class MELKAR_API CExpenditureGraph : public CLineGraph {
public:
    /// Arguments as for `CGraph`.
    CExpenditureGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    /// @return 0; 101 with everything kept; 102 with the header taken; 103.
    long ReadDataFile(char* path) override;
    long ReadIniFile(char* path) override;
    /// A cycle of its own: it goes on without records, and paints the band first.
    /// @return 0, 201 without a device context, -999 after an exception while drawing.
    long Draw(CRect area, char* path) override;
    void DrawSecExs() override;             ///< the legend of the two parts, left of the target's
    virtual long DrawAverageIntake();       ///< band and label. @return 0
    melkar::Contents Shown() const;         ///< the two parts by name, and the band of the intake
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    static melkar::DataTables DataFiles();  ///< the data file that it reads

protected:
    void ForgetPeriod(); ///< days, figures, bars and targets

    CRect m_rcEx1;                   ///< legend of the whole
    CRect m_rcEx2;                   ///< legend of the second part
    CString m_strEx1Label;           ///< legend of the whole
    CString m_strEx2Label;           ///< legend of the second part
    CString m_strAverageIntakeLabel; ///< label of the band
    COLORREF m_crIntake = 0;         ///< colour of the band
    CString m_strAverageIntake;      ///< average intake as the file wrote it
    CRect m_rcIntake;                ///< the band of the last drawing
    int m_nHeaderField5 = 0;         ///< field 5 of the header, kept for the application
    int m_nIntakeSize = 10;          ///< points

private:
    struct KeyRows;
    struct File;
    struct Parts;
    struct PartColumns;
    struct Cycle;
    MELKAR_LOCAL void AddParts(const Parts& parts);
};
