#include "spoken_table.h"

#include <algorithm>
#include <utility>

namespace melkar::gtk4 {
namespace {

constexpr std::size_t kMostRows = 400; // a year of days; more would make a window slow, and who would walk them?

Glib::Value<Glib::ustring> ValueOf(const std::string& text) {
    Glib::Value<Glib::ustring> value;
    value.init(Glib::Value<Glib::ustring>::value_type());
    value.set(text);
    return value;
}

std::size_t RowsOf(const widgets::Told& told) { return std::min(told.table.rows.size(), kMostRows); }

Gtk::Allocation AllocationOf(const CRect& place) {
    return {place.left, place.top, std::max(1, place.Width()), std::max(1, place.Height())};
}

} // namespace

Spoken::Spoken(Role role, std::string label) : m_label(std::move(label)) {
    property_accessible_role() = role;
    set_can_target(false);
    update_property(Property::LABEL, ValueOf(m_label));
}

Spoken::~Spoken() { Clear(); }

void Spoken::Clear() {
    for (const auto& part : m_parts)
        part->unparent();
    m_parts.clear();
}

Spoken& Spoken::Add(Role role, const std::string& label) {
    Spoken& part = *m_parts.emplace_back(std::make_unique<Spoken>(role, label));
    part.set_parent(*this);
    return part;
}

void Spoken::Say(const std::string& label) {
    if (std::exchange(m_label, label) != label)
        update_property(Property::LABEL, ValueOf(label));
}

void Spoken::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>&) {}

void SpokenTable::Tell(const widgets::Told& told) {
    const std::size_t cells = told.table.head.size();
    const bool isOfThatShape = Count() == RowsOf(told) + 1 && Part(0).Count() == cells;
    if (!isOfThatShape)
        Build(told);
    Say(told.words.title);
    for (std::size_t cell = 0; cell < cells; ++cell)
        Part(0).Part(cell).Say(told.table.head[cell]);
    for (std::size_t row = 0; row < RowsOf(told); ++row) {
        Part(row + 1).Say(told.names[row]);
        for (std::size_t cell = 0; cell < cells; ++cell)
            Part(row + 1).Part(cell).Say(told.table.rows[row][cell]);
    }
}

/// Without words.
void SpokenTable::Build(const widgets::Told& told) {
    Unfocus();
    Clear();
    const std::size_t cells = told.table.head.size();
    Spoken& head = Add(Role::ROW, "");
    for (std::size_t cell = 0; cell < cells; ++cell)
        head.Add(Role::COLUMN_HEADER, "");
    for (std::size_t at = 0; at < RowsOf(told); ++at) {
        Spoken& row = Add(Role::ROW, "");
        for (std::size_t cell = 0; cell < cells; ++cell)
            row.Add(cell == 0 ? Role::ROW_HEADER : Role::CELL, "");
    }
}

void SpokenTable::Allocate(const std::vector<CRect>& places) {
    for (std::size_t row = 0; row < Count(); ++row) {
        const bool isPlaced = row > 0 && row <= places.size();
        const Gtk::Allocation place = AllocationOf(isPlaced ? places[row - 1] : CRect());
        Part(row).size_allocate(place, -1);
        for (std::size_t cell = 0; cell < Part(row).Count(); ++cell)
            Part(row).Part(cell).size_allocate({0, 0, place.get_width(), place.get_height()}, -1);
    }
}

void SpokenTable::Focus(std::size_t item) {
    Spoken* const former = m_focused;
    if (item + 1 >= Count())
        return;
    m_focused = &Part(item + 1);
    m_focused->set_focusable();
    m_focused->grab_focus();
    if (former && former != m_focused)
        former->set_focusable(false);
}

void SpokenTable::Unfocus() {
    if (m_focused)
        m_focused->set_focusable(false);
    m_focused = nullptr;
}

} // namespace melkar::gtk4
