#include "target.h"

#include "room.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace melkar::fuzz {

// Each stands in a file of its own, as `DrawKind` in targets/kinds.cpp.
extern const Target kKinds, kSheets, kReaders, kProfile, kFormats, kText, kDrawing, kRecordings, kPictures, kIpp, kLog,
    kArguments, kImportCsv, kImportEpochs, kImportFhir;

std::span<const Target> Targets() {
    static const Target targets[] = {kKinds, kSheets,    kReaders,    kProfile,      kFormats,
                                     kText,  kDrawing,   kRecordings, kPictures,     kIpp,
                                     kLog,   kArguments, kImportCsv,  kImportEpochs, kImportFhir};
    return targets;
}

const Target* FindTarget(std::string_view name) {
    for (const Target& target : Targets())
        if (target.name == name)
            return &target;
    return nullptr;
}

void Begin() {
    setenv("LC_ALL", "C", 1);
    setenv("TZ", "UTC", 1);
    setenv("FONTCONFIG_FILE", MELKAR_TEST_FONTS, 1);
    tzset();
    std::setlocale(LC_ALL, "C");
    Room();
}

void Require(bool isSo, const std::string& what) {
    if (isSo)
        return;
    std::fprintf(stderr, "WRONG: %s\n", what.c_str());
    std::abort();
}

} // namespace melkar::fuzz
