#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>

/// A text of at most 255 bytes in a fixed room, as the blocks of a report keep them. A longer text is cut between two
/// characters; a per cent sign is a character like any other.
class MELKAR_API TextSlot {
public:
    static constexpr int kRoom = 256;

    TextSlot() = default;
    /// @param charset that of bytes that aren't UTF-8; it tells where characters end
    void Set(const CString& text, int charset);
    TextSlot& operator=(const CString& text) {
        Set(text, 0);
        return *this;
    }

    operator const char*() const { return m_text; } // NOLINT: stands where a buffer would
    int GetLength() const;

private:
    char m_text[kRoom] = {};
};
