#include <MelkarCommon/platform/text/installed_family.h>

#include <MelkarCommon/platform/text/font_alias.h>
#include <MelkarCommon/platform/values/ascii.h>

#include <fontconfig/fontconfig.h>

#include <memory>
#include <sstream>

namespace melkar {

namespace {

struct Destroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, Destroy>;

const char* FamilyAt(const FcPattern& pattern, int index) {
    FcChar8* family = nullptr;
    return FcPatternGetString(&pattern, FC_FAMILY, index, &family) == FcResultMatch
               ? reinterpret_cast<const char*>(family)
               : nullptr;
}

/// Names that stand for whatever the machine has of that sort.
bool IsSort(const std::string& name) {
    for (const char* sort : {"sans", "sans-serif", "serif", "monospace"})
        if (EqualNoCase(name, sort))
            return true;
    return false;
}

} // namespace

std::string InstalledFamily(const std::string& name) {
    const Pattern wanted(FcInit() != 0 ? FcPatternCreate() : nullptr);
    if (!wanted)
        return "";
    std::istringstream families(FamiliesFor(name));
    for (std::string family; std::getline(families, family, ',');)
        FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    const char* first = found ? FamilyAt(*found, 0) : nullptr;
    if (!first)
        return "";
    for (int i = 0; const char* family = FamilyAt(*found, i); ++i) // a font has names in several languages
        if (EqualNoCase(family, name))
            return name;
    return IsSort(name) ? name : first;
}

} // namespace melkar
