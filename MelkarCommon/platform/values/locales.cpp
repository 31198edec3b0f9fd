#include <MelkarCommon/platform/values/locales.h>

#include <algorithm>

namespace melkar {
namespace {

/// The name with ".UTF-8" in front of a modifier such as "@euro"; empty if it names a character set already.
std::string WithUtf8(const std::string& name) {
    if (name.empty() || name.find('.') != std::string::npos)
        return {};
    std::string utf8 = name;
    return utf8.insert(std::min(name.find('@'), name.size()), ".UTF-8");
}

} // namespace

locale_t CLocale() {
    static const locale_t kLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return kLocale;
}

locale_t OpenLocale(const std::string& name) {
    const std::string utf8 = WithUtf8(name);
    const locale_t preferred = utf8.empty() ? nullptr : newlocale(LC_ALL_MASK, utf8.c_str(), nullptr);
    return preferred ? preferred : newlocale(LC_ALL_MASK, name.c_str(), nullptr);
}

} // namespace melkar
