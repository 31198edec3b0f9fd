#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/reports/report_header.h>

#include <array>

/// @file
/// The block over graph pages.

/// Heads the graph pages: a framed table of labels in black cells and texts beside them.
///
/// `CalcRect` comes first, for `Draw` paints on its surface. The date of printing is stored by `CReportHeader::Draw`;
/// who wants it runs that before `Draw`.
class MELKAR_API CGraphHeader : public CReportHeader {
public:
    /// Reads the block's keys. @param section the block's own section
    explicit CGraphHeader(const char* section);

    /// Reads the data file (the slots stay if it can't be opened) and places the cells in `block`; the samples are
    /// measured at 10 points. @return where what follows may begin: the bottom of the last row + 5.
    int CalcRect(HDC surface, CRect block, CString dataFile) override;
    /// Paints on the surface of the last `CalcRect`; neither the surface nor the file given here is used. @return as
    /// `CalcRect`.
    int Draw(HDC surface, CRect block, CString dataFile) override;

    /// What the last `Draw` has written: an item for each label with the text beside it. Ask `melkar::ShownBy`.
    melkar::Contents Shown() const;

private:
    struct Pair;
    MELKAR_LOCAL std::array<Pair, 7> Pairs() const;
    MELKAR_LOCAL void DrawPairs() const;
};
