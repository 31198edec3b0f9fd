#pragma once

#include <MelkarCommon/checker/doubt.h>

#include <string>
#include <vector>

/// "3:2 number": line, column and rule of each.
inline std::string PlacesOf(const std::vector<melkar::Doubt>& doubts) {
    std::string places;
    for (const melkar::Doubt& doubt : doubts)
        places += (places.empty() ? "" : ", ") + std::to_string(doubt.line) + ":" + std::to_string(doubt.column) + " " +
                  doubt.rule;
    return places;
}
