#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surfaces/handles.h>

#include <vector>

using namespace melkar; // NOLINT(google-build-using-namespace)

namespace {

constexpr std::size_t kMostBytes = std::size_t{16} << 20;

struct GlobalMemory : HandleHead, InHandleMemory<ObjectKind::Memory> {
    explicit GlobalMemory(std::size_t size) : HandleHead(ObjectKind::Memory), bytes(size) {}
    std::vector<std::byte> bytes;
};

GlobalMemory* MemoryOf(HANDLE handle) {
    auto* head = static_cast<HandleHead*>(handle);
    return head != nullptr && head->kind == ObjectKind::Memory ? static_cast<GlobalMemory*>(head) : nullptr;
}

} // namespace

HANDLE GlobalAlloc(UINT, std::size_t bytes) {
    if (bytes > kMostBytes)
        return nullptr;
    return OrFailure([&]() -> HandleHead* { return new GlobalMemory(bytes); });
}

void* GlobalLock(HANDLE memory) {
    GlobalMemory* found = MemoryOf(memory);
    return found != nullptr ? found->bytes.data() : nullptr;
}

BOOL GlobalUnlock(HANDLE memory) { return MemoryOf(memory) != nullptr ? TRUE : FALSE; }

HANDLE GlobalFree(HANDLE memory) {
    const GlobalMemory* found = MemoryOf(memory);
    if (found == nullptr)
        return memory;
    delete found;
    return nullptr;
}
