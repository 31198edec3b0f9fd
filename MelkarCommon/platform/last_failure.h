#pragma once

#include <MelkarCommon/api.h>

/// @file
/// Why something came to nothing, in words.

namespace melkar {

/// Why the last picture file, page, surface for one, or printed document of this thread came to nothing, such as
/// "PNG file [out/a.png] not written: No such file or directory": mostly the line that it left in the log, cut at 511
/// bytes. To be asked where `WritePng`, `WritePicture`, `CreatePageSurface` and its sisters, `DeleteDC` of a page,
/// `CreateDCA`, `StartDocA` or `EndDoc` (`CReport::DocStart`, `DocEnd`) says that it failed: the next of them that
/// succeeds empties it. Never null; the text stands until the next of these calls on the thread.
///
/// @code{.cpp}
/// if (WritePng(view, "week.png") != 0)
///     std::fprintf(stderr, "%s\n", melkar::LastFailure());
/// @endcode
MELKAR_API const char* LastFailure();

} // namespace melkar
