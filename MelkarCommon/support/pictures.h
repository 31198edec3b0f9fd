#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Picture files on a surface: BMP and PNG; JPEG, GIF, TIFF, SVG and WebP where the machine has loaders for them. At
/// most 2^26 pixels, in a file of at most 256 MB: anything else can't be read.
///
/// @code{.cpp}
/// DrawBMP(view, CRect(10, 10, 110, 110), "medal.bmp", SRCCOPY, 1, 1 | 4); // with its proportions, in the middle
/// @endcode

/// Paints a picture file into a box.
/// @param surface drawn on @param box where it stands @param file its path @param operation `SRCCOPY`, `SRCPAINT` or
/// `SRCAND`
/// @param keepProportions 0: the picture fills the box; else it is as large as fits
/// @param alignment of a picture with its proportions; bits: 1 centred across, else 2 right, else left; 4 centred down,
///        else 8 bottom, else top
/// @return the bottom of the box; with proportions the box's top plus the height of the file's picture (not of the
///         painted one); 0, with a log line and nothing painted, if the file can't be read; 1200 after an exception.
///         A box without area counts as read and paints nothing; one with its edges in the wrong order can't be read.
MELKAR_API int DrawBMP(HDC surface, CRect box, const char* file, unsigned long operation, int keepProportions,
                       unsigned int alignment);

/// Lays one picture through another: brightens by the second file (`SRCPAINT`), then darkens by the first (`SRCAND`).
/// Where the second is white and the first holds the picture, the picture shows; where the second is black and
/// the first is white, the surface does. @return what `DrawBMP` gives for the first file.
MELKAR_API int DrawBMPTrans(HDC surface, CRect box, const char* first, const char* second, int keepProportions);
