#include "room.h"

#include <MelkarCommon/platform/surface.h>

namespace melkar::fuzz {

namespace fs = std::filesystem;

const TempWorkdir& Room() {
    static const TempWorkdir* const room = [] {
        if (getenv("TMPDIR") == nullptr && fs::is_directory("/dev/shm"))
            setenv("TMPDIR", "/dev/shm", 1);
        static const TempWorkdir made;
        return &made;
    }();
    return *room;
}

Visit::Visit() : m_alive(LiveObjectCount()), m_known{Room().Path("log/graph.log")} {}

Visit::~Visit() {
    Require(LiveObjectCount() == m_alive,
            std::to_string(LiveObjectCount()) + " objects live, before it were " + std::to_string(m_alive));
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Room().Path("")))
        if (!entry.is_directory()) {
            Require(m_known.contains(entry.path()), "a file is left: " + entry.path().string());
            fs::remove(entry.path());
        }
}

std::string Visit::Give(const std::string& name, std::string_view bytes) {
    Room().Write(name, bytes);
    return Expect(name);
}

std::string Visit::Expect(const std::string& name) { return *m_known.insert(Room().Path(name)).first; }

} // namespace melkar::fuzz
