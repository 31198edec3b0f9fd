#include <MelkarCommon/support/text_cut.h>

#include <MelkarCommon/platform/text/text_decode.h>

namespace melkar {

CString CutText(const CString& text, int bytes, int charset) {
    return CString(CutBytes(text.View(), static_cast<std::size_t>(bytes), charset));
}

} // namespace melkar
