#pragma once

#include "data_cells.h"
#include "pixel_story.h"
#include "trial_host.h"

#include <MelkarCommon/checker/effective_keys.h>

#include <string>
#include <vector>

/// @file
/// What a pixel hangs on: the picture is drawn again and again, each time with another value of something.

namespace melkar::tool {

/// Something with whose other value the pixel is coloured otherwise, or by another operation.
struct Cause {
    std::string file;
    int line = 0;        ///< from 1; 0: it isn't there
    int column = 0;      ///< of a cell, from 1
    std::string section; ///< of a key
    std::string name;    ///< of the key or column
    std::string value;
    std::string meaning;    ///< in a few words; may be empty
    std::string otherValue; ///< that was tried
    PixelStory story;       ///< with that
};

/// As many pictures as are drawn for one answer.
constexpr int kMostTrials = 1500;

class CauseSearch {
public:
    /// @param request with absolute paths @param base of the host @param story as it is
    CauseSearch(const Request& request, const std::string& base, CPoint at, const PixelStory& story);

    /// Keys whose other value changes it; each is tried alone, with two values at most.
    std::vector<Cause> Keys();
    /// The same of cells. They are tried together first, and apart where that changes something: of two that undo
    /// each other neither is found.
    std::vector<Cause> Cells();
    bool IsWhole() const { return m_left > 0 && m_cells.AreAll(); } ///< whether everything has been tried

private:
    PixelStory Draw(const Request& request);
    PixelStory DrawWith(std::span<const OtherCell> others);
    void Search(std::span<const OtherCell> others, std::vector<Cause>& causes);

    const Request& m_request;
    std::string m_profile;
    CPoint m_at;
    const PixelStory& m_story;
    int m_left = kMostTrials;
    TrialHost m_host;
    DataCells m_cells;
};

} // namespace melkar::tool
