#include <MelkarCommon/checker/doubter.h>

#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/profile_values.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

/// @file
/// Whether the boxes of a panel have room, and stand clear of each other, at a given size.

namespace melkar {

namespace {

struct NamedBox {
    std::string name; ///< "note box"
    const ProfileEntry* entry;
    CRect box;
};

/// The first words of what a key sets: its box.
std::string BoxName(const KeyInfo& row) {
    const std::string meaning = row.meaning;
    return meaning.substr(0, meaning.find(','));
}

POINT PointOf(const ProfileEntry* entry) { return entry ? ParsePoint(entry->value) : POINT{0, 0}; }

const ProfileEntry* FindNamed(const SectionReading& reading, const char* name) {
    const KeyInfo* row = reading.Keys().RowNamed(name);
    return row ? reading.Find(*row) : nullptr;
}

int NumberOf(const ProfileEntry* entry) { return entry ? ParseInt(entry->value) : 0; }

std::optional<NamedBox> TitleOf(const SectionReading& reading, const KeyInfo& row, const CRect& panel) {
    const ProfileEntry* height = FindNamed(reading, row.beside);
    if (NumberOf(height) == 0)
        return std::nullopt;
    const ProfileEntry* corner = reading.Find(row);
    return NamedBox{BoxName(row), corner ? corner : height,
                    TitleBox(panel, PointOf(corner), NumberOf(FindNamed(reading, row.with)), NumberOf(height))};
}

std::optional<NamedBox> BoxOf(const SectionReading& reading, const KeyInfo& row, const CRect& panel) {
    const ProfileEntry* corner = reading.Find(row);
    const ProfileEntry* other = FindNamed(reading, row.with);
    const auto isOdd = [&](const ProfileEntry* entry) { return entry && !HasItsForm(row, entry->value); };
    if (!reading.IsOpen(row) || (!corner && !other) || isOdd(corner) || isOdd(other))
        return std::nullopt;
    const POINT from = PointOf(corner);
    const POINT to = PointOf(other);
    return NamedBox{BoxName(row), corner ? corner : other, Inside(panel, {from.x, from.y, to.x, to.y})};
}

bool HasRoom(const CRect& box) { return box.right > box.left && box.bottom > box.top; }

bool Holds(const CRect& outer, const CRect& inner) {
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

bool Meet(const CRect& a, const CRect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::string Edges(const CRect& box) {
    return "from " + std::to_string(box.left) + "," + std::to_string(box.top) + " to " + std::to_string(box.right) +
           "," + std::to_string(box.bottom);
}

std::string At(PictureSize size) { return " at " + std::to_string(size.width) + "x" + std::to_string(size.height); }

void DoubtBox(const NamedBox& one, const CRect& panel, PictureSize size, Doubter& doubter) {
    if (!HasRoom(one.box))
        doubter.TellValue("box-inside-out", *one.entry, "the " + one.name + " goes " + Edges(one.box) + At(size));
    else if (!Holds(panel, one.box))
        doubter.TellValue("box-outside", *one.entry, "the " + one.name + " goes " + Edges(one.box) + At(size));
}

/// A note box may stand within the graph area.
void DoubtPair(const NamedBox& a, const NamedBox& b, PictureSize size, Doubter& doubter) {
    if (HasRoom(a.box) && HasRoom(b.box) && Meet(a.box, b.box) && !Holds(a.box, b.box) && !Holds(b.box, a.box))
        doubter.TellValue("box-overlap", *b.entry, "the " + b.name + " overlaps the " + a.name + At(size));
}

} // namespace

void DoubtBoxes(const SectionReading& reading, PictureSize size, Doubter& doubter) {
    const CRect panel(0, 0, size.width, size.height);
    std::vector<NamedBox> boxes;
    for (const KeyInfo& row : reading.Keys().Rows()) {
        if (row.role != KeyRole::Box && row.role != KeyRole::TitleBox)
            continue;
        const auto box = row.role == KeyRole::TitleBox ? TitleOf(reading, row, panel) : BoxOf(reading, row, panel);
        if (!box)
            continue;
        DoubtBox(*box, panel, size, doubter);
        for (const NamedBox& before : boxes)
            DoubtPair(before, *box, size, doubter);
        boxes.push_back(*box);
    }
}

} // namespace melkar
