#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// A point of a plot.

/// One point of a plot graph: plain data.
class MELKAR_API CPlot {
public:
    CPlot() = default;
    /// A point with its values; the order is that of the arguments, not of the members.
    CPlot(float x, float y, int size, COLORREF color, int connect)
        : m_fX(x), m_fY(y), m_crColor(color), m_bConnect(connect), m_nSize(size) {}
    CPlot(const CPlot&) = default;            ///< the same point
    CPlot& operator=(const CPlot&) = default; ///< the same point
    virtual ~CPlot();

    /// @name Values
    /// @{

    /// The member of that name.
    float PlotX() const { return m_fX; }
    float PlotY() const { return m_fY; }
    int Size() const { return m_nSize; }
    COLORREF Color() const { return m_crColor; }
    int IsConnect() const { return m_bConnect; }
    void SetX(float x) { m_fX = x; }
    void SetY(float y) { m_fY = y; }
    void SetPlot(float x, float y) {
        m_fX = x;
        m_fY = y;
    }
    void SetPlot(CPlot other) { *this = other; } ///< all values of another point
    void SetSize(int size) { m_nSize = size; }
    void SetColor(COLORREF color) { m_crColor = color; }
    void SetConnect(int connect) { m_bConnect = connect; }
    /// @}

protected:
    float m_fX = 0;         ///< in the units of the scale
    float m_fY = 0;         ///< likewise
    COLORREF m_crColor = 0; ///< fill and outline of the circle
    int m_bConnect = 0;     ///< not 0: joined to the point before it
    int m_nSize = 0;        ///< diameter, device units
};
