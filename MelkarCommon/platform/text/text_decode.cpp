#include <MelkarCommon/platform/text/text_decode.h>

#include <iconv.h>

#include <array>
#include <cerrno>

/// @file
/// Bytes to characters: valid UTF-8 is taken as it is, all else is in the code page of a character set.

namespace melkar {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

unsigned char At(std::string_view bytes, std::size_t i) { return static_cast<unsigned char>(bytes[i]); }

/// What the second byte of a sequence may be: narrower than 80 to BF where an overlong form, a surrogate or a
/// character beyond U+10FFFF would begin.
bool IsSecondByte(unsigned char lead, unsigned char second) {
    switch (lead) {
    case 0xE0:
        return second >= 0xA0 && second <= 0xBF;
    case 0xED:
        return second >= 0x80 && second <= 0x9F;
    case 0xF0:
        return second >= 0x90 && second <= 0xBF;
    case 0xF4:
        return second >= 0x80 && second <= 0x8F;
    default:
        return IsContinuation(static_cast<char>(second));
    }
}

std::size_t Utf8Length(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

bool IsUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = Utf8Length(At(bytes, i));
        if (length == 0 || length > bytes.size() - i)
            return false;
        if (length > 1 && !IsSecondByte(At(bytes, i), At(bytes, i + 1)))
            return false;
        for (std::size_t k = 2; k < length; ++k)
            if (!IsContinuation(bytes[i + k]))
                return false;
        i += length;
    }
    return true;
}

/// Code points that are no characters, and never will be: U+FDD0 to U+FDEF, and the last two of each plane.
bool IsNoCharacter(std::string_view utf8) {
    if (utf8.starts_with("\xEF\xB7"))
        return At(utf8, 2) >= 0x90 && At(utf8, 2) <= 0xAF;
    const std::string_view ofPlane = utf8.substr(utf8.size() - 3);
    return (At(ofPlane, 0) & 0xFU) == 0xF && ofPlane[1] == '\xBF' && At(ofPlane, 2) >= 0xBE;
}

/// Valid UTF-8 with nothing in it that a page refuses.
std::string WithoutNoCharacters(std::string_view utf8) {
    constexpr std::string_view kLeads = "\xEF\xF0\xF1\xF2\xF3\xF4"; // from U+F000 on
    std::string text(utf8);
    for (std::size_t i = text.find_first_of(kLeads); i != std::string::npos; i = text.find_first_of(kLeads, i + 1)) {
        const std::size_t length = Utf8Length(At(text, i));
        if (IsNoCharacter(std::string_view(text).substr(i, length)))
            text.replace(i, length, kReplacement);
    }
    return text;
}

struct CodePage {
    int charset;
    const char* name;
    unsigned char firstTrail; ///< smallest second byte of a double-byte character; 0: single bytes only
};

constexpr std::array<CodePage, 12> kCodePages = {{
    {0, "CP1252", 0},
    {128, "CP932", 0x40},
    {129, "CP949", 0x41},
    {134, "CP936", 0x40},
    {136, "CP950", 0x40},
    {161, "CP1253", 0},
    {162, "CP1254", 0},
    {177, "CP1255", 0},
    {178, "CP1256", 0},
    {186, "CP1257", 0},
    {204, "CP1251", 0},
    {238, "CP1250", 0},
}};

std::size_t PageOf(int charset) {
    for (std::size_t i = 0; i < kCodePages.size(); ++i)
        if (kCodePages[i].charset == charset)
            return i;
    return 0;
}

/// A double-byte character begins here. A lead byte before something that can't follow it stands alone.
bool IsDoubleByte(const CodePage& page, std::string_view bytes, std::size_t i) {
    if (page.firstTrail == 0 || i + 1 >= bytes.size() || At(bytes, i + 1) < page.firstTrail)
        return false;
    const unsigned char lead = At(bytes, i);
    if (page.charset == 128) // between the lead bytes of CP932 lie the half-width katakana
        return (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    return lead >= 0x81 && lead <= 0xFE;
}

/// The converters that this thread has opened, by page.
class Converters {
public:
    Converters() { open_.fill(kNone); }
    ~Converters() {
        for (const iconv_t converter : open_)
            if (converter != kNone)
                iconv_close(converter);
    }
    Converters(const Converters&) = delete;
    Converters& operator=(const Converters&) = delete;

    static bool IsOpen(iconv_t converter) { return converter != kNone; }

    iconv_t Get(std::size_t page) {
        if (open_[page] == kNone)
            open_[page] = iconv_open("UTF-8", kCodePages[page].name);
        return open_[page];
    }

private:
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what iconv_open gives on failure
    static inline const iconv_t kNone = reinterpret_cast<iconv_t>(-1);
    std::array<iconv_t, kCodePages.size()> open_;
};

/// A machine without the code page still shows what is ASCII.
std::string DecodeAscii(std::string_view bytes) {
    std::string text;
    for (const char c : bytes)
        if (static_cast<unsigned char>(c) < 0x80)
            text += c;
        else
            text += kReplacement;
    return text;
}

std::string Convert(iconv_t converter, std::string_view bytes) {
    std::string text;
    char* in = const_cast<char*>(bytes.data()); // iconv's signature; it only reads
    std::size_t left = bytes.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    while (left > 0) {
        std::array<char, 512> buffer;
        char* out = buffer.data();
        std::size_t room = buffer.size();
        const bool stopped = iconv(converter, &in, &left, &out, &room) == static_cast<std::size_t>(-1);
        const int why = errno;
        text.append(buffer.data(), out);
        if (stopped && why != E2BIG) { // a byte that means nothing, or half a character at the end
            text += kReplacement;
            ++in;
            --left;
        }
    }
    // A page with combining characters holds the last one back until it knows what follows.
    std::array<char, 16> buffer;
    char* out = buffer.data();
    std::size_t room = buffer.size();
    iconv(converter, nullptr, nullptr, &out, &room);
    return text.append(buffer.data(), out);
}

} // namespace

std::size_t LengthAt(std::string_view utf8, std::size_t i) {
    std::size_t end = i + 1;
    while (end < utf8.size() && IsContinuation(utf8[end]))
        ++end;
    return end - i;
}

bool IsControl(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1)
        return first < 0x20 || first == 0x7F;
    if (character.size() == 2)
        return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
    return character == "\u2028" || character == "\u2029";
}

std::string DecodeText(std::string_view bytes, int charset) {
    if (IsUtf8(bytes))
        return WithoutNoCharacters(bytes);
    static thread_local Converters converters;
    const iconv_t converter = converters.Get(PageOf(charset));
    return Converters::IsOpen(converter) ? Convert(converter, bytes) : DecodeAscii(bytes);
}

std::string DecodeLine(std::string_view bytes, int charset, std::size_t limit) {
    const std::string utf8 = DecodeText(bytes, charset);
    std::string line;
    for (std::size_t i = 0; i < utf8.size();) {
        const std::string_view character(utf8.data() + i, LengthAt(utf8, i));
        const std::string_view shown = IsControl(character) ? " " : character;
        if (shown.size() > limit - line.size())
            break;
        line += shown;
        i += character.size();
    }
    return line;
}

std::string_view CutBytes(std::string_view bytes, std::size_t limit, int charset) {
    if (bytes.size() <= limit)
        return bytes;
    const bool utf8 = IsUtf8(bytes);
    const CodePage& page = kCodePages[PageOf(charset)];
    std::size_t end = 0;
    while (true) {
        const std::size_t length = utf8 ? Utf8Length(At(bytes, end)) : IsDoubleByte(page, bytes, end) ? 2 : 1;
        if (length > limit - end)
            return bytes.substr(0, end);
        end += length;
    }
}

} // namespace melkar
