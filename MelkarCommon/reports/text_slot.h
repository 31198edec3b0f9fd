#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>

/// @file
/// The slots of a report's blocks: plain buffers, so that a host's class may copy a text of its own into them.

namespace melkar {

/// A text of at most 255 bytes with its NUL.
using TextSlot = char[256];

/// Puts as much of a text into a slot as it holds, cutting no character in two; a per cent sign is a character like any
/// other. @param slot gets it, with a NUL @param text any text @param charset that of bytes that aren't UTF-8
MELKAR_API void PutText(TextSlot& slot, const CString& text, int charset);

} // namespace melkar
