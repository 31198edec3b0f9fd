#pragma once

#include <MelkarCommon/frame/contents.h>

#include <string>
#include <vector>

/// @file
/// What a report says, page by page, as plain data. Whoever prints it collects what stands on its pages while it draws
/// them (samples/hosts/month_report.h); areas are those of the pages.

namespace melkar {

/// A page of a report. Texts are UTF-8 and those of the page.
struct ShownPage {
    std::string name;               ///< what it calls itself, such as "Page 1 / 6"
    Contents heading;               ///< the block that opens it, an item for each label
    std::vector<std::string> texts; ///< what is written beside the pictures, in the order of writing
    std::vector<Contents> pictures; ///< in the order of drawing
};

/// A report.
struct ShownReport {
    std::string title;            ///< of its document
    std::vector<ShownPage> pages; ///< in their order
};

} // namespace melkar
