#pragma once

#include <MelkarCommon/api.h>

namespace melkar {

/// Tells whoever looks after the machine: one line, taken as it is, for text from files is never a format. Declared
/// here for the drawing layer; the ring log above it writes the line.
MELKAR_API void LogText(const char* text);

} // namespace melkar
