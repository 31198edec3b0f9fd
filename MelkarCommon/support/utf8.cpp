#include <MelkarCommon/support/utf8.h>

#include <MelkarCommon/platform/text/text_decode.h>

namespace melkar {

std::string Utf8Of(const CString& text, int charset) { return DecodeText(text.View(), charset); }

} // namespace melkar
