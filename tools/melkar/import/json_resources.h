#pragma once

#include "csv_rows.h"

#include <string>
#include <string_view>

/// @file
/// Health records one resource at a time, so that a bundle of any length takes the memory of its longest.

namespace melkar::importer {

/// Walks through a file of JSON objects: a bundle, or one object behind the other, as in exports of a line for each
/// (.ndjson). The elements of an object's "entry" come one by one, then the object itself with an empty "entry".
class JsonResources {
public:
    /// Throws `Refusal` if the file can't be read.
    explicit JsonResources(const std::string& path);

    /// The next one. Throws `Refusal` where the text can't be JSON. @return false at the end
    bool Next();

    std::string_view Text() const { return m_text; } ///< valid until the next one
    bool IsEntry() const { return m_isEntry; }
    long Line() const { return m_line; } ///< on which it begins, from 1

private:
    int NextByte();
    int SkipBlanks();
    void Expect(char letter);
    [[noreturn]] void Refuse(const std::string& what) const;
    void Put(std::string& to, int byte);
    void CopyString(std::string& to);
    void CopyNested(std::string& to);
    void CopyValue(std::string& to);
    bool BeginObject();
    bool CopyMembers();
    bool NextEntry();

    enum class Place { Between, InObject, InEntries };

    Blocks m_blocks;
    Place m_place = Place::Between;
    std::string m_text;
    std::string m_object; ///< what there is of the object whose entries are at hand
    long m_objectLine = 1;
    long m_line = 1;
    long m_nextLine = 1;
    bool m_isEntry = false;
    bool m_isFirst = false; ///< of the entries at hand
};

} // namespace melkar::importer
