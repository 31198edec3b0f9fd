#include <MelkarCommon/checker/doubter.h>

#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

/// @file
/// Whether scales make sense.

namespace melkar {

namespace {

/// What a graph reads; nothing of a key that isn't there, or hasn't its form, which is told elsewhere.
std::optional<double> NumberOf(const SectionReading& reading, const KeyInfo& row) {
    const ProfileEntry* entry = reading.Find(row);
    if (!entry || entry->value.empty() || !HasItsForm(row, entry->value))
        return std::nullopt;
    return ToDouble(std::string(entry->value).c_str());
}

bool IsTop(KeyRole role) { return role == KeyRole::ScaleTop || role == KeyRole::FreeScaleTop; }

std::string Range(const ProfileScale& scale) {
    return detail::ShowNumber(scale.from) + " to " + detail::ShowNumber(scale.to);
}

void DoubtTop(const SectionReading& reading, const KeyInfo& top, Doubter& doubter) {
    const auto scale = ScaleOf(reading, top);
    if (scale && scale->to <= scale->from)
        doubter.TellValue("empty-scale", *scale->top, "not above the bottom: the scale goes from " + Range(*scale));
}

void DoubtStep(const SectionReading& reading, const KeyInfo& row, PictureSize size, Doubter& doubter) {
    const KeyInfo* top = reading.Keys().RowNamed(row.with);
    const auto scale = top ? ScaleOf(reading, *top) : std::nullopt;
    if (!scale || scale->to <= scale->from)
        return;
    const ProfileEntry* entry = reading.Find(row);
    if (!entry) {
        if (!reading.Keys().Needs(row)) // else it is told as missing
            doubter.TellValue("interval", *scale->top,
                              std::string("no step to this scale: ") + row.name + " is missing");
        return;
    }
    const auto step = NumberOf(reading, row);
    if (entry->value.empty() || (step && *step <= 0))
        return doubter.TellValue("interval", *entry, "not a step above 0: " + Quoted(entry->value));
    if (!step)
        return;
    const double lines = (scale->to - scale->from) / *step;
    if (lines > size.height)
        doubter.TellValue("crowded-scale", *entry,
                          "more lines from " + Range(*scale) +
                              " than the picture has rows: " + detail::ShowNumber(lines));
    else if (lines != std::floor(lines))
        doubter.TellValue("uneven-scale", *entry, "doesn't divide the scale from " + Range(*scale));
}

void DoubtParts(const SectionReading& reading, const KeyInfo& row, PictureSize size, Doubter& doubter) {
    const auto parts = NumberOf(reading, row);
    if (parts && *parts > std::max(size.width, size.height))
        doubter.TellValue("crowded-scale", *reading.Find(row), "more parts than the picture has pixels");
}

} // namespace

std::optional<ProfileScale> ScaleOf(const SectionReading& reading, const KeyInfo& top) {
    const KeyInfo* bottom = IsTop(top.role) ? reading.Keys().RowNamed(top.with) : nullptr;
    const auto to = bottom ? NumberOf(reading, top) : std::nullopt;
    if (!to)
        return std::nullopt;
    const double from = NumberOf(reading, *bottom).value_or(0);
    const bool isFree = top.role == KeyRole::FreeScaleTop && !reading.Keys().Needs(top);
    return isFree && *to <= from ? std::nullopt : std::optional(ProfileScale{reading.Find(top), from, *to});
}

void DoubtScales(const SectionReading& reading, PictureSize size, Doubter& doubter) {
    for (const KeyInfo& row : reading.Keys().Rows()) {
        if (IsTop(row.role))
            DoubtTop(reading, row, doubter);
        else if (row.role == KeyRole::ScaleStep)
            DoubtStep(reading, row, size, doubter);
        else if (row.role == KeyRole::ScaleParts)
            DoubtParts(reading, row, size, doubter);
    }
}

} // namespace melkar
