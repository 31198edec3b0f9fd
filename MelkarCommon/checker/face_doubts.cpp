#include <MelkarCommon/checker/doubter.h>
#include <MelkarCommon/platform/text/installed_family.h>

#include <string>

/// @file
/// Whether the machine has the faces of a profile.

namespace melkar {

void DoubtFaces(const SectionReading& reading, PictureSize, Doubter& doubter) {
    for (const KeyInfo& row : reading.Keys().Rows()) {
        const ProfileEntry* entry = row.role == KeyRole::Face ? reading.Find(row) : nullptr;
        constexpr std::size_t kLongest = 100; // bytes of the name of a face
        if (!entry || entry->value.empty() || entry->value.size() > kLongest)
            continue;
        const std::string name(entry->value);
        const std::string family = InstalledFamily(name);
        if (family != name)
            doubter.TellValue("face", *entry,
                              "this machine has no " + Quoted(name) +
                                  (family.empty() ? ", nor any other font" : "; " + family + " stands in"));
    }
}

} // namespace melkar
