#pragma once

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Drawing tools for one scope: selected at the beginning, put back and deleted at the end, whatever happens in
/// between.
///
/// @code{.cpp}
/// const melkar::ScopedFont font(view, CreateFontA(-16, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "DejaVu Sans"));
/// const melkar::ScopedBkMode transparent(view, TRANSPARENT);
/// TextOutA(view, 10, 10, "8123", 4);
/// @endcode

namespace melkar {

/// Selects an object that stays its owner's; null selects nothing.
class ScopedSelection {
public:
    /// From here to the end of the scope.
    ScopedSelection(HDC surface, HGDIOBJ object) : m_surface(surface), m_former(SelectObject(surface, object)) {}
    ~ScopedSelection() { SelectObject(m_surface, m_former); }
    ScopedSelection(const ScopedSelection&) = delete;
    ScopedSelection& operator=(const ScopedSelection&) = delete;

private:
    HDC m_surface;
    HGDIOBJ m_former;
};

/// Selects an object that it owns from now on; null selects nothing.
class ScopedObject {
public:
    /// From here to the end of the scope.
    ScopedObject(HDC surface, HGDIOBJ object)
        : m_surface(surface), m_object(object), m_former(SelectObject(surface, object)) {}
    ~ScopedObject() {
        SelectObject(m_surface, m_former);
        DeleteObject(m_object);
    }
    ScopedObject(const ScopedObject&) = delete;
    ScopedObject& operator=(const ScopedObject&) = delete;

private:
    HDC m_surface;
    HGDIOBJ m_object;
    HGDIOBJ m_former;
};

/// A font for one scope.
class ScopedFont : public ScopedObject {
public:
    /// Takes the font over.
    ScopedFont(HDC surface, HFONT font) : ScopedObject(surface, font) {}
};

/// A pen for one scope.
class ScopedPen : public ScopedObject {
public:
    /// Arguments as for `CreatePen`.
    ScopedPen(HDC surface, int style, int width, COLORREF color)
        : ScopedObject(surface, CreatePen(style, width, color)) {}
};

/// A brush for one scope.
class ScopedBrush : public ScopedObject {
public:
    /// Fills with a colour.
    ScopedBrush(HDC surface, COLORREF color) : ScopedObject(surface, CreateSolidBrush(color)) {}
};

/// Sets the background mode (OPAQUE or TRANSPARENT) for one scope.
class ScopedBkMode {
public:
    /// From here to the end of the scope.
    ScopedBkMode(HDC surface, int mode) : m_surface(surface), m_former(SetBkMode(surface, mode)) {}
    ~ScopedBkMode() {
        if (m_former != 0)
            SetBkMode(m_surface, m_former);
    }
    ScopedBkMode(const ScopedBkMode&) = delete;
    ScopedBkMode& operator=(const ScopedBkMode&) = delete;

private:
    HDC m_surface;
    int m_former;
};

/// Sets the background colour, of texts and of gaps in lines, for one scope.
class ScopedBkColor {
public:
    /// From here to the end of the scope.
    ScopedBkColor(HDC surface, COLORREF color) : m_surface(surface), m_former(SetBkColor(surface, color)) {}
    ~ScopedBkColor() { SetBkColor(m_surface, m_former); }
    ScopedBkColor(const ScopedBkColor&) = delete;
    ScopedBkColor& operator=(const ScopedBkColor&) = delete;

private:
    HDC m_surface;
    COLORREF m_former;
};

/// Sets the colour of texts for one scope.
class ScopedTextColor {
public:
    /// From here to the end of the scope.
    ScopedTextColor(HDC surface, COLORREF color) : m_surface(surface), m_former(SetTextColor(surface, color)) {}
    ~ScopedTextColor() { SetTextColor(m_surface, m_former); }
    ScopedTextColor(const ScopedTextColor&) = delete;
    ScopedTextColor& operator=(const ScopedTextColor&) = delete;

private:
    HDC m_surface;
    COLORREF m_former;
};

} // namespace melkar
