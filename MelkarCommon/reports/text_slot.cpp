#include <MelkarCommon/reports/text_slot.h>

#include <MelkarCommon/support/text_cut.h>

#include <cstring>

void TextSlot::Set(const CString& text, int charset) {
    const CString head = melkar::CutText(text, kRoom - 1, charset);
    std::memcpy(m_text, head.GetString(), static_cast<std::size_t>(head.GetLength()) + 1);
}

int TextSlot::GetLength() const { return static_cast<int>(std::strlen(m_text)); }
