#include "json_resources.h"

#include "notes.h"

namespace melkar::importer {
namespace {

constexpr std::size_t kMostOfResource = std::size_t{16} << 20; ///< a photograph may be in it
constexpr std::string_view kEntry = "\"entry\"";

} // namespace

JsonResources::JsonResources(const std::string& path) : m_blocks(path) { SkipByteOrderMark(m_blocks); }

void JsonResources::Refuse(const std::string& what) const {
    throw Refusal("line " + std::to_string(m_nextLine) + ": " + what);
}

int JsonResources::NextByte() {
    const int byte = m_blocks.Next();
    m_nextLine += byte == '\n' ? 1 : 0;
    return byte;
}

/// @return what comes next, which stays
int JsonResources::SkipBlanks() {
    for (;;) {
        const int byte = m_blocks.Peek();
        if (byte != ' ' && byte != '\t' && byte != '\n' && byte != '\r')
            return byte;
        NextByte();
    }
}

void JsonResources::Expect(char letter) {
    const int byte = SkipBlanks();
    if (byte == Blocks::kEnd)
        Refuse("the JSON ends in the middle");
    if (byte != letter)
        Refuse(std::string("no JSON: ")
                   .append(Quoted(std::string(1, static_cast<char>(byte))))
                   .append(" in the place of ") +
               letter);
    NextByte();
}

void JsonResources::Put(std::string& to, int byte) {
    if (byte == Blocks::kEnd)
        Refuse("the JSON ends in the middle");
    if (to.size() >= kMostOfResource)
        Refuse("a resource of more than 16 mebibytes");
    to += static_cast<char>(byte);
}

void JsonResources::CopyString(std::string& to) {
    Expect('"');
    Put(to, '"');
    for (;;) {
        const int byte = NextByte();
        Put(to, byte);
        if (byte == '"')
            return;
        if (byte == '\\')
            Put(to, NextByte());
    }
}

/// An object or an array, to its end.
void JsonResources::CopyNested(std::string& to) {
    long depth = 0;
    do {
        const int byte = m_blocks.Peek();
        if (byte == '"') {
            CopyString(to);
            continue;
        }
        depth += byte == '{' || byte == '[' ? 1 : byte == '}' || byte == ']' ? -1 : 0;
        Put(to, NextByte());
    } while (depth > 0);
}

void JsonResources::CopyValue(std::string& to) {
    int byte = SkipBlanks();
    if (byte == '"')
        return CopyString(to);
    if (byte == '{' || byte == '[')
        return CopyNested(to);
    while (byte != Blocks::kEnd &&
           std::string_view(",}] \t\r\n").find(static_cast<char>(byte)) == std::string_view::npos) {
        Put(to, NextByte());
        byte = m_blocks.Peek();
    }
}

/// Copies members of the object, up to entries or its end. @return false at its end
bool JsonResources::CopyMembers() {
    while (SkipBlanks() != '}') {
        if (m_object.size() > 1) {
            Expect(',');
            Put(m_object, ',');
        }
        const std::size_t key = m_object.size();
        CopyString(m_object);
        const bool isEntry = std::string_view(m_object).substr(key) == kEntry;
        Expect(':');
        Put(m_object, ':');
        if (isEntry && SkipBlanks() == '[') {
            NextByte();
            m_object += "[]";
            m_isFirst = true;
            return true;
        }
        CopyValue(m_object);
    }
    Put(m_object, NextByte());
    return false;
}

/// @return false behind the last one
bool JsonResources::NextEntry() {
    if (SkipBlanks() == ']') {
        NextByte();
        return false;
    }
    if (!m_isFirst)
        Expect(',');
    if (SkipBlanks() != '{')
        Expect('{');
    m_isFirst = false;
    m_isEntry = true;
    m_line = m_nextLine;
    m_text.clear();
    CopyNested(m_text);
    return true;
}

bool JsonResources::BeginObject() {
    if (SkipBlanks() == Blocks::kEnd)
        return false;
    m_objectLine = m_nextLine;
    Expect('{');
    m_object.assign(1, '{');
    m_place = Place::InObject;
    return true;
}

bool JsonResources::Next() {
    if (m_place == Place::Between && !BeginObject())
        return false;
    for (;;) {
        if (m_place == Place::InEntries && NextEntry())
            return true;
        m_place = CopyMembers() ? Place::InEntries : Place::Between;
        if (m_place == Place::Between)
            break;
    }
    m_text = m_object;
    m_line = m_objectLine;
    m_isEntry = false;
    return true;
}

} // namespace melkar::importer
