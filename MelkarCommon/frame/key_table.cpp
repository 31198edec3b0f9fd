#include <MelkarCommon/frame/key_table.h>

#include <MelkarCommon/support/support.h>

namespace melkar {

const std::string* KeyReader::Find(const KeyInfo& key, const char* name) const {
    return m_file.Find(key.section == KeySection::Common ? std::string_view("COMMON") : std::string_view(m_own), name);
}

CString KeyReader::Text(const KeyInfo& key) const {
    CString text = ProfileText(Find(key, key.name), "");
    if (key.type == KeyType::Message)
        text.Replace(" __n__ ", "\n");
    return text;
}

int KeyReader::Number(const KeyInfo& key) const {
    const int value = ProfileInt(Find(key, key.name), key.fallback);
    return key.type == KeyType::Switch ? value > 0 : value;
}

COLORREF KeyReader::Color(const KeyInfo& key) const {
    const std::string* value = Find(key, key.name);
    return value ? ParseColor(value->c_str(), 0) : 0;
}

COLORREF KeyReader::Color(const KeyInfo& key, int index) const {
    CString name(key.name);
    name.Replace("%d", std::to_string(index).c_str());
    const std::string* value = Find(key, name);
    return value ? ParseColor(value->c_str(), 0) : 0;
}

} // namespace melkar
