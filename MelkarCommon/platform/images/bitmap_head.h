#pragma once

/// @file
/// Internal. What the head of a BMP file promises.

namespace melkar {

/// True for a BMP file that ends before its last row, of which the loader would show whatever memory it found, or
/// within its head, for which the loader would ask for as much as it claims. Files of other formats never are; their
/// loaders notice.
bool IsCutBitmap(const char* path);

} // namespace melkar
