#include <MelkarCommon/registry/catalogue.h>

#include <MelkarCommon/registry/rows.h>
#include <MelkarCommon/support/ring_log.h>

#include <string>

namespace melkar {

namespace {

std::deque<KindRow>& Rows() {
    static std::deque<KindRow> rows(LibraryRows().begin(), LibraryRows().end());
    return rows;
}

/// The row whose `field` has that text; an empty one finds nothing.
const KindRow* Find(const char* KindRow::*field, std::string_view text) {
    for (const KindRow& row : Rows())
        if (!text.empty() && text == row.*field)
            return &row;
    return nullptr;
}

} // namespace

const std::deque<KindRow>& Catalogue() { return Rows(); }

const KindRow* FindClass(std::string_view name) { return Find(&KindRow::className, name); }
const KindRow* FindKind(std::string_view kind) { return Find(&KindRow::kind, kind); }

bool Register(const KindRow& row) {
    const bool isKnown = FindKind(row.kind) || FindClass(row.className);
    if (isKnown || (*row.base && !FindClass(row.base)) || (*row.keysOf && !FindKind(row.keysOf))) {
        LogText((std::string("not registered: kind [") + row.kind + "], class [" + row.className +
                 (isKnown ? "] is there already" : "] rests on a row that isn't"))
                    .c_str());
        return false;
    }
    Rows().push_back(row);
    return true;
}

std::vector<ClassKeys> KeysReadBy(const KindRow& row) {
    if (const KindRow* other = FindKind(row.keysOf))
        return KeysReadBy(*other);
    std::vector<ClassKeys> keys;
    for (const KindRow* one = &row; one; one = FindClass(one->base))
        if (one->keys)
            keys.insert(keys.begin(), one->keys());
    return keys;
}

DataTables FilesReadBy(const KindRow& row) {
    for (const KindRow* one = &row; one; one = FindClass(one->base))
        if (one->data)
            return one->data();
    return {};
}

} // namespace melkar
