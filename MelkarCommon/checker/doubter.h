#pragma once

#include <MelkarCommon/checker/doubt.h>
#include <MelkarCommon/checker/placed_profile.h>
#include <MelkarCommon/checker/section_reading.h>

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// Internal. Collects doubts about a profile, but for those that its comments silence.

namespace melkar {

class Doubter {
public:
    explicit Doubter(const PlacedProfile& file) : m_file(file) {}

    /// @param rule a known one @param line from 1, 0 for the whole file @param column likewise
    void Tell(const char* rule, int line, int column, std::string text);
    void TellKey(const char* rule, const ProfileEntry& entry, std::string text) {
        Tell(rule, entry.line, entry.keyColumn, std::string(entry.key.substr(0, kShown)) + ": " + std::move(text));
    }
    void TellValue(const char* rule, const ProfileEntry& entry, std::string text) {
        Tell(rule, entry.line, entry.valueColumn, std::string(entry.key.substr(0, kShown)) + ": " + std::move(text));
    }
    /// In the order of the lines, each once.
    std::vector<Doubt> Take();

private:
    static constexpr std::size_t kShown = 60; ///< bytes of a name

    const PlacedProfile& m_file;
    std::vector<Doubt> m_doubts;
};

/// "\"text\"", of a long one the beginning.
std::string Quoted(std::string_view text);

/// "[NAME]", of a long one the beginning.
std::string InBrackets(std::string_view name);

/// A picture that is to be drawn, in device units.
struct PictureSize {
    int width;
    int height;
};

// The passes over what a graph reads.
void DoubtKeys(const SectionReading& reading, PictureSize size, Doubter& doubter); ///< whether they are read
void DoubtMissing(const SectionReading& reading, PictureSize size, Doubter& doubter);
void DoubtValues(const SectionReading& reading, PictureSize size, Doubter& doubter); ///< of what form they are
void DoubtScales(const SectionReading& reading, PictureSize size, Doubter& doubter);
void DoubtBoxes(const SectionReading& reading, PictureSize size, Doubter& doubter);
void DoubtColors(const SectionReading& reading, PictureSize size, Doubter& doubter);
void DoubtFaces(const SectionReading& reading, PictureSize size, Doubter& doubter);

/// Keys of COMMON, which is read by all kinds alike.
void DoubtCommon(const ProfileSection& common, Doubter& doubter);

/// Whether the value has the form that its type asks for; an empty number is its default.
bool HasItsForm(const KeyInfo& row, std::string_view value);
/// Tells if it hasn't.
void DoubtForm(const KeyInfo& row, const ProfileEntry& entry, Doubter& doubter);

} // namespace melkar
