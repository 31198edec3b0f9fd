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
    Desk() : m_surfaces(std::in_place, m_visit) { Choose('m'); }
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

    /// What the call at hand takes its arguments from.
    Bytes& From() { return m_bytes; }
    void Take(Bytes bytes) { m_bytes = bytes; }
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

    Bytes m_bytes{""};
    Visit m_visit;
    std::optional<Surfaces> m_surfaces;
    std::vector<HDC> m_tops; ///< those that were drawn on, the last on top
    std::vector<HDC> m_compatible;
    std::vector<HGDIOBJ> m_objects;
};

/// Takes its arguments from the desk's bytes.
using Call = void (*)(Desk&);

/// Those that draw on the surface on top, or change how it draws.
std::span<const Call> DrawingCalls();
/// Behind those the others, in this order: choose a kind of surface, a former one, a new one that suits, give that a
/// bitmap, copy; and what looks, selects and deletes.
std::span<const Call> AllCalls();

constexpr std::size_t kBlock = 16; ///< bytes of a call: its number and its arguments

/// A call for each block. @param limit of their numbers, as of `Bytes`
void Run(Desk& desk, std::span<const Call> calls, std::string_view blocks, int limit = 0);

/// One block; arguments that aren't given are 0.
std::string Block(std::size_t call, const std::string& arguments);

/// A block for every one of them, with growing numbers.
std::string EachOf(std::span<const Call> calls);

} // namespace melkar::fuzz
