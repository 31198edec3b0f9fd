#include <MelkarCommon/reports/text_slot.h>

#include <MelkarCommon/support/text_cut.h>

#include <cstring>

namespace melkar {

void PutText(TextSlot& slot, const CString& text, int charset) {
    const CString head = CutText(text, sizeof slot - 1, charset);
    std::memcpy(slot, head.GetString(), static_cast<std::size_t>(head.GetLength()) + 1);
}

} // namespace melkar
