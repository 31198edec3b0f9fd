#pragma once

#include "input.h"
#include "surfaces.h"

#include <MelkarCommon/platform/drawing.h>

#include <optional>
#include <span>

/// @file
/// Drawing calls as numbers.

namespace melkar::fuzz {

/// Surfaces and objects, which calls leave selected anywhere.
class Desk {
public:
    explicit Desk(Bytes bytes) : m_bytes(bytes), m_surfaces(std::in_place, m_visit) { Choose('m'); }
    /// What is selected isn't deleted, so surfaces go first.
    ~Desk() {
        for (HDC made : m_compatible)
            DeleteDC(made);
        m_surfaces.reset();
        for (HGDIOBJ object : m_objects)
            DeleteObject(object);
    }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    bool IsDone() const { return m_bytes.IsEmpty(); }
    Bytes& From() { return m_bytes; }
    HDC Top() const { return m_tops.back(); }
    HDC Any() { return m_tops[m_bytes.Next() % m_tops.size()]; }
    HGDIOBJ AnyObject() { return m_objects.empty() ? nullptr : m_objects[m_bytes.Next() % m_objects.size()]; }

    HDC Of(char kind) { return m_surfaces->Of(kind); }
    void Choose(char kind) { m_tops.push_back(Of(kind)); }
    void ChooseFormer() { m_tops.push_back(Any()); }
    void ChooseCompatible() {
        if (m_compatible.size() < kMost)
            m_tops.push_back(m_compatible.emplace_back(CreateCompatibleDC(Top())));
    }
    void Keep(HGDIOBJ object) {
        if (m_objects.size() < kMost)
            m_objects.push_back(object);
        else
            DeleteObject(object);
    }
    /// Selected, as a rule.
    void Use(HGDIOBJ object) {
        Keep(object);
        SelectObject(Top(), object);
    }

private:
    static constexpr std::size_t kMost = 40;

    Bytes m_bytes;
    Visit m_visit;
    std::optional<Surfaces> m_surfaces;
    std::vector<HDC> m_tops; ///< those that were drawn on, the last on top
    std::vector<HDC> m_compatible;
    std::vector<HGDIOBJ> m_objects;
};

/// Takes what it needs from the desk's bytes.
using Call = void (*)(Desk&);

/// Those that draw on the surface on top, or change how it draws.
std::span<const Call> DrawingCalls();
/// Behind those the others, which choose, look, copy and delete.
std::span<const Call> AllCalls();

/// A call for each byte that it doesn't take itself.
void Run(Desk& desk, std::span<const Call> calls);

/// Every one of them, with growing numbers.
std::string EachOf(std::span<const Call> calls);

} // namespace melkar::fuzz
