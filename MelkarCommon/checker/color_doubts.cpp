#include <MelkarCommon/checker/color_difference.h>
#include <MelkarCommon/checker/doubter.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/profile_values.h>

#include <optional>
#include <string>

/// @file
/// Whether texts and marks stand out against their grounds, and neighbours against each other.

namespace melkar {

namespace {

constexpr double kTextContrast = 4.5;
constexpr double kMarkContrast = 3;
constexpr double kLeastDistance = 13; ///< in Lab, under any colour blindness
constexpr double kLeastGrey = 20;     ///< in L*

/// Of a key that is there and has its form, or of one that is missing and has a colour all the same.
std::optional<COLORREF> ColorOf(const SectionReading& reading, const KeyInfo& row, int index) {
    const ProfileEntry* entry = reading.Find(row, index);
    if (!entry)
        return row.fallback != 0 ? std::optional(static_cast<COLORREF>(row.fallback)) : std::nullopt;
    if (!HasItsForm(row, entry->value) || !reading.IsOpen(row))
        return std::nullopt;
    return ParseColor(std::string(entry->value).c_str(), 0);
}

/// Of texts without a colour key of their own: that of the graph, else that of COMMON, else black.
COLORREF PlainTextColor(const SectionReading& reading) {
    COLORREF plain = 0;
    for (const KeySection section : {KeySection::Common, KeySection::Own})
        for (const KeyInfo& row : reading.Keys().Rows())
            if (row.section == section && row.role == KeyRole::PlainColor && reading.Find(row))
                plain = ColorOf(reading, row, row.firstIndex).value_or(plain);
    return plain;
}

/// A ground of COMMON is painted by the kinds alone that need it; others may be in a profile with these.
bool IsPainted(const SectionReading& reading, const KeyInfo& ground) {
    return ground.section == KeySection::Own || reading.Keys().Needs(ground);
}

std::string Times(double ratio) { return FormatFixed(ratio, 1).GetString(); }

void DoubtContrast(const ProfileEntry& entry, double contrast, double least, const std::string& on, Doubter& doubter) {
    if (contrast < least)
        doubter.TellValue(least == kTextContrast ? "text-contrast" : "mark-contrast", entry,
                          "a contrast of " + Times(contrast) + " " + on + "; it should be " + Times(least));
}

void DoubtGround(const SectionReading& reading, const KeyInfo& row, int index, const ProfileEntry& entry,
                 Doubter& doubter) {
    const auto color = ColorOf(reading, row, index);
    if (!color)
        return;
    if (row.role == KeyRole::Ground) {
        if (IsPainted(reading, row))
            DoubtContrast(entry, ContrastOf(*color, PlainTextColor(reading)), kTextContrast, "to the texts on it",
                          doubter);
        return;
    }
    const KeyInfo* on = *row.with ? reading.Keys().RowNamed(row.with) : nullptr;
    const auto ground = on && IsPainted(reading, *on) ? ColorOf(reading, *on, on->firstIndex) : std::nullopt;
    const bool isHidden = row.role == KeyRole::TitleColor && ground == color;
    if (ground && !isHidden)
        DoubtContrast(entry, ContrastOf(*color, *ground),
                      row.role == KeyRole::MarkColor ? kMarkContrast : kTextContrast, std::string("to ") + on->name,
                      doubter);
}

const char* NameOf(Sight sight) {
    constexpr const char* kNames[] = {"anybody", "a person without red cones", "a person without green cones",
                                      "a person without blue cones", "a printer without colours"};
    return kNames[static_cast<int>(sight)];
}

/// Two keys in one colour are meant to look alike; two of a list aren't.
void DoubtNeighbour(const SectionReading& reading, const KeyInfo& row, int index, const ProfileEntry& entry,
                    Doubter& doubter) {
    const bool isList = std::string_view(row.beside) == row.name;
    const KeyInfo* other = reading.Keys().RowNamed(row.beside);
    const int at = !other || isList ? index + 1 : other->firstIndex;
    const auto color = ColorOf(reading, row, index);
    const auto neighbour = other && reading.Find(*other, at) ? ColorOf(reading, *other, at) : std::nullopt;
    if (!color || !neighbour || (!isList && *color == *neighbour))
        return;
    for (const Sight sight : {Sight::Protanopia, Sight::Deuteranopia, Sight::Tritanopia, Sight::Grey}) {
        const bool isGrey = sight == Sight::Grey;
        const double least = isGrey ? kLeastGrey : kLeastDistance;
        const double distance = DistanceOf(*color, *neighbour, sight);
        if (distance < least)
            doubter.TellValue(isGrey ? "grey" : "color-blind", entry,
                              std::string("to ") + NameOf(sight) + " too close to " + NameIn(*other, at) + ": " +
                                  Times(distance) + ", it should be " + FormatFixed(least, 0).GetString());
    }
}

} // namespace

void DoubtColors(const SectionReading& reading, PictureSize, Doubter& doubter) {
    for (const KeyInfo& row : reading.Keys().Rows()) {
        if (row.type != KeyType::Color)
            continue;
        for (const auto& [index, entry] : reading.EntriesOf(row)) {
            DoubtGround(reading, row, index, *entry, doubter);
            if (*row.beside)
                DoubtNeighbour(reading, row, index, *entry, doubter);
        }
    }
}

} // namespace melkar
