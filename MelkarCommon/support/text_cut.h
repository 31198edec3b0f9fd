#pragma once

#include <MelkarCommon/platform/cstring.h>

namespace melkar {

/// The head of a text that fits `bytes`, cutting no character in two. @param charset of bytes that aren't UTF-8
CString CutText(const CString& text, int bytes, int charset);

} // namespace melkar
