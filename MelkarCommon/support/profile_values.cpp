#include <MelkarCommon/platform/profile.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/profile_values.h>
#include <MelkarCommon/support/support.h>

#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kValueRoom = 1024; // bytes of a value, with its NUL

class ValueText {
public:
    ValueText(const char* file, const char* section, const char* key) {
        GetPrivateProfileStringA(section, key, "", m_text, sizeof m_text, file);
    }
    const char* Text() const { return m_text; }

private:
    char m_text[kValueRoom];
};

COLORREF PackColor(int red, int green, int blue) {
    return RGB(static_cast<unsigned>(red), static_cast<unsigned>(green), static_cast<unsigned>(blue));
}

} // namespace

unsigned long GetRGB(const char* file, const char* section, const char* key) {
    if (!key)
        return 0;
    const auto channel = [&](const char* suffix) {
        return melkar::ParseInt(ValueText(file, section, (std::string(key) + suffix).c_str()).Text());
    };
    return PackColor(channel("_R"), channel("_G"), channel("_B"));
}

unsigned long GetRGBEx(const char* file, const char* section, const char* key, unsigned long fallback) {
    return melkar::ParseColor(ValueText(file, section, key).Text(), static_cast<COLORREF>(fallback));
}

POINT GetPOINT(const char* file, const char* section, const char* key) {
    return melkar::ParsePoint(ValueText(file, section, key).Text());
}

namespace melkar {

COLORREF ParseColor(const char* value, COLORREF fallback) {
    const std::string_view text = value ? std::string_view(value, strnlen(value, kValueRoom - 1)) : std::string_view();
    const std::size_t first = text.find(',');
    const std::size_t second = first == std::string_view::npos ? first : text.find(',', first + 1);
    if (second == std::string_view::npos)
        return fallback;
    return PackColor(ParseInt(text.substr(0, first)), ParseInt(text.substr(first + 1, second - first - 1)),
                     ParseInt(text.substr(second + 1)));
}

POINT ParsePoint(std::string_view value) {
    const std::string_view text = value.substr(0, kValueRoom - 1);
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos)
        return {0, 0};
    return {ParseInt(text.substr(0, comma)), ParseInt(text.substr(comma + 1))};
}

} // namespace melkar
