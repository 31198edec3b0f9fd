#include <MelkarCommon/frame/key_table.h>

#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/profile_values.h>
#include <MelkarCommon/support/ring_log.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace melkar {

namespace {

thread_local SharedProfile* g_shared = nullptr;

bool IsTrue(const std::string* value) { return value && EqualNoCase(*value, "true"); }

/// The colour as the profile writes it.
std::string ColorText(int color) {
    const auto channel = [color](int shift) { return std::to_string(color >> shift & 0xFF); };
    return channel(0) + "," + channel(8) + "," + channel(16);
}

} // namespace

char* GraphProfile() {
    static std::string path = kGraphProfile;
    return path.data();
}

SharedProfile::SharedProfile() : m_outer(std::exchange(g_shared, this)) {}

SharedProfile::~SharedProfile() { g_shared = m_outer; }

std::shared_ptr<const ProfileSnapshot> SharedProfile::Read(const std::string& ownSection) {
    if (!m_file)
        m_file = std::make_shared<const ProfileFile>(kGraphProfile);
    if (!m_last || !m_last->IsOf(ownSection))
        m_last = std::make_shared<const ProfileSnapshot>(*m_file, ownSection);
    return m_last;
}

KeyReader::KeyReader(const char* path, const char* ownSection, const char* stem) : m_own(ownSection), m_stem(stem) {
    const char* file = path && *path ? path : kGraphProfile;
    const bool isShared = g_shared && g_shared->m_host == HostPlace() && std::string_view(file) == kGraphProfile;
    m_file = isShared ? g_shared->Read(m_own) : ReadProfile(file, m_own);
}

const std::string* KeyReader::Find(const KeyInfo& key, int index) const {
    CString name(key.name);
    name.Replace("%d", std::to_string(index).c_str());
    name.Replace("%s", m_stem.c_str());
    return key.section == KeySection::Common ? m_file->FindCommon(name.View()) : m_file->FindOwn(name.View());
}

CString KeyReader::Text(const KeyInfo& key, int index) const {
    CString text = ProfileText(Find(key, index), key.fallbackText);
    if (key.type == KeyType::Message)
        text.Replace(" __n__ ", "\n");
    return text;
}

int KeyReader::Number(const KeyInfo& key, int index) const {
    const std::string* text = Find(key, index);
    if (key.type == KeyType::TrueWord)
        return IsTrue(text);
    const int value = ProfileInt(text, key.fallback);
    return key.type == KeyType::Switch ? value > 0 : value;
}

float KeyReader::Real(const KeyInfo& key) const {
    constexpr double most = std::numeric_limits<float>::max();
    const std::string* text = Find(key, 0);
    return text ? static_cast<float>(std::clamp(ToDouble(text->c_str()), -most, most)) : 0.0F;
}

COLORREF KeyReader::Color(const KeyInfo& key, int index) const {
    const std::string* text = Find(key, index);
    return ParseColor(text ? text->c_str() : nullptr, static_cast<COLORREF>(key.fallback));
}

POINT KeyReader::Point(const KeyInfo& key) const {
    const std::string* text = Find(key, 0);
    return text ? ParsePoint(*text) : POINT{0, 0};
}

void KeyReader::LogWhatIsMissing() const {
    if (!m_file->IsRead())
        LogText(("can't read the profile " + m_file->Path() + "; section [" + m_own + "] is at its defaults").c_str());
    else if (!m_file->HasOwn())
        LogText(("no section [" + m_own + "] in the profile " + m_file->Path()).c_str());
}

std::string ExampleOf(const KeyInfo& key) {
    if (*key.example)
        return key.example;
    switch (key.type) {
    case KeyType::Number:
        return std::to_string(key.fallback);
    case KeyType::Switch:
        return "1";
    case KeyType::TrueWord:
        return "true";
    case KeyType::Real:
        return "1.5";
    case KeyType::Color:
        return key.fallback ? ColorText(key.fallback) : "104,114,128";
    case KeyType::Point:
        return "10,10";
    default:
        return *key.fallbackText ? key.fallbackText : "a text";
    }
}

std::string FallbackOf(const KeyInfo& key) {
    if (*key.fallbackKey)
        return std::string("as ") + key.fallbackKey;
    switch (key.type) {
    case KeyType::Number:
    case KeyType::Switch:
        return std::to_string(key.fallback);
    case KeyType::TrueWord:
        return "off";
    case KeyType::Real:
        return "0";
    case KeyType::Color:
        if (key.fallback == static_cast<int>(kNoColor))
            return "none";
        return key.fallback ? ColorText(key.fallback) : "black";
    case KeyType::Point:
        return "0,0";
    default:
        return *key.fallbackText ? key.fallbackText : "empty";
    }
}

} // namespace melkar
