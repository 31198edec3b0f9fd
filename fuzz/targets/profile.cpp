// Profiles: what one pass over the file finds is what the calls find that read it each time, and whatever stands there,
// every key that a class reads comes to a value.

#include "../input.h"
#include "../profiles.h"
#include "../room.h"

#include <MelkarCommon/checker/doubts.h>
#include <MelkarCommon/checker/placed_profile.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/profile.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/registry/key_reference.h>
#include <MelkarCommon/support/support.h>

namespace melkar::fuzz {
namespace {

constexpr const char* kMissing = "\1"; ///< no profile has it as a value

void Compare(const std::string* found, const char* path, const char* section, const char* key) {
    char value[10000];
    GetPrivateProfileStringA(section, key, kMissing, value, sizeof value, path);
    const std::string expected = found == nullptr ? kMissing : found->substr(0, sizeof value - 1);
    Require(std::string(expected.c_str()) == value, std::string("two readings of ") + key);
    Require(ProfileInt(found, 7) == GetPrivateProfileIntA(section, key, 7, path), std::string("two numbers of ") + key);
}

void ReadValue(const KeyReader& reader, const KeyInfo& key) {
    for (const int index : {0, 1, 9}) {
        reader.Text(key, index);
        reader.Number(key, index);
        reader.Color(key, index);
    }
    reader.Real(key);
    reader.Point(key);
}

/// Doubts are about lines of the file, and about what graphs find there.
void AskForDoubts(const std::string& path, const std::string& section, const ProfileSnapshot& snapshot) {
    const PlacedProfile placed(path);
    const ProfileSection* own = placed.Find(section);
    Require((own != nullptr) == snapshot.HasOwn(), "a section is there or not");
    for (const ProfileEntry& entry : own ? own->entries : std::vector<ProfileEntry>()) {
        const std::string* value = snapshot.FindOwn(entry.key);
        Require(value && (own->Find(entry.key) != &entry || *value == entry.value), "the value is that of the first");
    }
    for (const char* kind : {"", "bar", "pie", "text"})
        for (const Doubt& doubt : Doubts(path, section, kind))
            Require(FindDoubtRule(doubt.rule) && doubt.line >= 0 && doubt.column >= 0,
                    "a doubt has a rule and a place");
}

/// The first line is a section and a key, with a full stop between them.
void ReadProfile(std::string_view input) {
    Visit visit;
    const std::string asked(TakeLine(input));
    const std::string path = visit.Give("conf/graph.cnf", input);
    const std::string section = asked.substr(0, asked.find('.'));
    const std::string key = asked.substr(std::min(asked.size(), section.size() + 1));
    const ProfileSnapshot snapshot(ProfileFile(path.c_str()), section);
    Compare(snapshot.FindOwn(key), path.c_str(), section.c_str(), key.c_str());
    GetRGB(path.c_str(), section.c_str(), key.c_str());
    Require(GetRGBEx(path.c_str(), section.c_str(), key.c_str(), 9) <= 0xFFFFFF, "a colour has three channels");
    GetPOINT(path.c_str(), section.c_str(), key.c_str());
    AskForDoubts(path, std::string(TrimBlanks(section)), snapshot);
    const KeyReader reader("", section.c_str());
    reader.LogWhatIsMissing();
    for (const ClassKeys& table : AllProfileKeys())
        for (const KeyInfo& row : table.keys) {
            const bool isOwn = row.section == KeySection::Own;
            Compare(isOwn ? snapshot.FindOwn(row.name) : snapshot.FindCommon(row.name), path.c_str(),
                    isOwn ? section.c_str() : "COMMON", row.name);
            ReadValue(reader, row);
        }
}

void SeedProfiles(Seeds& seeds) {
    AddProfileWords(seeds);
    const std::string asked = "OWN.TITLELABEL\n";
    for (const KindRow& row : Catalogue())
        seeds.add(std::string(row.className) + row.kind, asked + ProfileOf(row));
    seeds.add("mark-of-order",
              asked + "\xEF\xBB\xBF[own]\r\n TitleLabel = \" a\"\r\n;TITLELABEL=b\r\n[OWN]\r\nTITLELABEL=c");
    seeds.add("brackets",
              asked + "[OWN\n[]\n=\n[OWN]TITLELABEL=a\n ]OWN[\n[OWN]\n=TITLELABEL\nTITLELABEL\nTITLELABEL==");
    seeds.add("allowed", asked + "; melkar: allow color number\n[OWN]\nCHARTMAX=1,800\nBARSCOLOR_RGB=#dc7878\n");
    using namespace std::string_literals;
    seeds.add("nul", asked + "[OWN]\nTITLE\0LABEL=1\nTITLELABEL=\0\n"s);
}

} // namespace

extern const Target kProfile;
const Target kProfile{"profile", "a section and key to ask for, and a profile", ReadProfile, SeedProfiles};

} // namespace melkar::fuzz
