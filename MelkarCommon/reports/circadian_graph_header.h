#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/reports/report_header.h>

/// @file
/// The block over circadian pages.

/// Heads the circadian pages: lays out a smaller table on the pattern of `CGraphHeader` and paints nothing, for a host
/// that paints its own.
class MELKAR_API CCircadianGraphHeader : public CReportHeader {
public:
    /// Reads the block's keys. @param section the block's own section
    explicit CCircadianGraphHeader(const char* section) : CReportHeader(section) {}

    /// Reads the data file (the slots stay if it can't be opened) and places the cells of rows 0 to 4 in `block`, the
    /// samples measured at the size of the profile. @return where what follows may begin: the bottom of the last row
    /// + 5.
    int CalcRect(HDC surface, CRect block, CString dataFile) override;
    int Draw(HDC surface, CRect block, CString dataFile) override; ///< paints nothing. @return as `CalcRect`.
};
