#include <MelkarCommon/support/ini_reader.h>

#include <MelkarCommon/platform/profile.h>
#include <MelkarCommon/support/profile_values.h>

#include <string_view>

namespace {

constexpr std::size_t kValueRoom = 10000; // bytes of a value, with its NUL

CString WithLineFeeds(CString value) {
    value.Replace("__YN__", "\n");
    return value;
}

} // namespace

CString CIniReader::ReadString(CString file, CString section, CString key, const char* fallback) {
    const melkar::HostDirectory here(m_host);
    char buffer[kValueRoom];
    GetPrivateProfileStringA(section, key, fallback, buffer, sizeof buffer, file.IsEmpty() ? m_strFilePath : file);
    return WithLineFeeds(buffer);
}

int CIniReader::ReadStringToInt(CString file, CString section, CString key, int fallback) {
    const melkar::HostDirectory here(m_host);
    return GetPrivateProfileIntA(section, key, fallback, file.IsEmpty() ? m_strFilePath : file);
}

namespace melkar {
CString ProfileText(const std::string* value, const char* fallback) {
    if (!value)
        return WithLineFeeds(fallback);
    return WithLineFeeds(CString(std::string_view(*value).substr(0, kValueRoom - 1)));
}
} // namespace melkar
