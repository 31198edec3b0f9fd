#pragma once

#include "chart_view.h"

#include <gtkmm.h>

#include <memory>
#include <string>
#include <vector>

namespace melkar::gtk4 {

/// A widget that is heard and not seen, with parts of the same kind. The pointer goes through it.
class Spoken : public Gtk::Widget {
public:
    Spoken(Role role, std::string label);
    ~Spoken() override;

    Spoken& Add(Role role, const std::string& label);
    void Clear();
    void Say(const std::string& label);
    std::size_t Count() const { return m_parts.size(); }
    Spoken& Part(std::size_t at) const { return *m_parts.at(at); }

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    std::string m_label;
    std::vector<std::unique_ptr<Spoken>> m_parts;
};

/// The table of a picture: a row of heads, and one for each item, which can have the keyboard's focus.
class SpokenTable : public Spoken {
public:
    SpokenTable() : Spoken(Role::TABLE, "") {}

    /// A table of the same shape keeps its rows, and the focus.
    void Tell(const widgets::Told& told);
    void Allocate(const std::vector<CRect>& places); ///< where rows are pointed out
    void Focus(std::size_t item);                    ///< its row takes it
    void Unfocus();                                  ///< no row can have it

private:
    void Build(const widgets::Told& told);

    Spoken* m_focused = nullptr;
};

} // namespace melkar::gtk4
