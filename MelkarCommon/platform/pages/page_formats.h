#pragma once

#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/pages/page_file.h>

/// @file
/// Internal. The formats of page files, and how a file of any of them comes to its name.

namespace melkar {

/// @param file open and empty
std::unique_ptr<PageFile> MakePdfPages(std::unique_ptr<NewFile> file, int width, int height, int dpi,
                                       const DocumentInfo& info);
/// @param file open and empty @param format either kind of SVG
std::unique_ptr<PageFile> MakeSvgPage(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
                                      const DocumentInfo& info);

/// Gives the file its name. @param drawingError what went wrong with drawing, null if nothing did. @return false, with
/// a log line and no file, if there was an error or the file can't be written.
bool FinishPage(NewFile& file, PageFormat format, const char* drawingError);

} // namespace melkar
