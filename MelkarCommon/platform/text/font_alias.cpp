#include <MelkarCommon/platform/text/font_alias.h>
#include <MelkarCommon/platform/values/ascii.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace melkar {
namespace {

struct Alias {
    std::string_view name; ///< as profiles write it, in any case
    const char* families;
};

constexpr Alias kAliases[] = {
    {"MS Gothic", "IPAGothic,monospace"},
    {"ＭＳ ゴシック", "IPAGothic,monospace"},
    {"MS PGothic", "IPAPGothic,sans"},
    {"ＭＳ Ｐゴシック", "IPAPGothic,sans"},
    {"MS UI Gothic", "IPAPGothic,sans"},
    {"Meiryo", "IPAPGothic,sans"},
    {"メイリオ", "IPAPGothic,sans"},
    {"MS Mincho", "IPAMincho,serif"},
    {"ＭＳ 明朝", "IPAMincho,serif"},
    {"MS PMincho", "IPAPMincho,serif"},
    {"ＭＳ Ｐ明朝", "IPAPMincho,serif"},
    {"Arial", "DejaVu Sans,sans"},
    {"MS Sans Serif", "DejaVu Sans,sans"},
    {"Segoe UI", "DejaVu Sans,sans"},
    {"Tahoma", "DejaVu Sans,sans"},
    {"Verdana", "DejaVu Sans,sans"},
    {"Times New Roman", "DejaVu Serif,serif"},
    {"Courier New", "DejaVu Sans Mono,monospace"},
};

const Alias* FindAlias(const std::string& name) {
    const auto* const found = std::find_if(std::begin(kAliases), std::end(kAliases),
                                           [&](const Alias& alias) { return EqualNoCase(alias.name, name); });
    return found != std::end(kAliases) ? found : nullptr;
}

} // namespace

std::string FamiliesFor(const std::string& name) {
    if (name.empty())
        return "sans";
    const Alias* alias = FindAlias(name);
    return name + "," + (alias != nullptr ? alias->families : "sans");
}

bool IsJapanese(const std::string& name) {
    const Alias* alias = FindAlias(name);
    return alias != nullptr && std::string_view(alias->families).starts_with("IPA");
}

} // namespace melkar
