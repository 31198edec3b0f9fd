#include <MelkarCommon/platform/surfaces/handles.h>

#include <array>
#include <mutex>
#include <utility>

namespace melkar {

namespace {

constexpr std::size_t kObjectsAtOnce = 64;

/// Memory without an object; a list through the pieces themselves.
struct FreePiece : HandleHead {
    explicit FreePiece(FreePiece* following) : HandleHead(ObjectKind::Gone), next(following) {}
    FreePiece* next;
};

/// What ended threads left. Trivial to destroy: objects may be freed while the process ends.
struct LeftPieces {
    std::mutex mutex;
    std::array<FreePiece*, kObjectKinds> first{};

    void Add(std::size_t kind, FreePiece* pieces) {
        const std::lock_guard lock(mutex);
        while (pieces != nullptr) {
            FreePiece* following = std::exchange(pieces->next, first[kind]);
            first[kind] = std::exchange(pieces, following);
        }
    }
    FreePiece* TakeAll(std::size_t kind) {
        const std::lock_guard lock(mutex);
        return std::exchange(first[kind], nullptr);
    }
};
constinit LeftPieces g_left;

thread_local bool t_piecesGone = false; ///< outlives the pieces: objects may be freed while a thread ends

/// The free pieces of a thread.
struct ThreadPieces {
    ThreadPieces() = default;
    ThreadPieces(const ThreadPieces&) = delete;
    ThreadPieces& operator=(const ThreadPieces&) = delete;
    ~ThreadPieces() {
        t_piecesGone = true;
        for (std::size_t kind = 0; kind < kObjectKinds; ++kind)
            g_left.Add(kind, first[kind]);
    }

    std::array<FreePiece*, kObjectKinds> first{};
};
thread_local ThreadPieces t_pieces;

/// Fresh pieces; null without memory.
FreePiece* MakePieces(std::size_t size) {
    auto* block = static_cast<std::byte*>(::operator new(size* kObjectsAtOnce, std::nothrow));
    FreePiece* first = nullptr;
    for (std::size_t i = kObjectsAtOnce; block != nullptr && i > 0; --i)
        first = new (block + (i - 1) * size) FreePiece(first);
    return first;
}

} // namespace

void* TakeHandleMemory(ObjectKind kind, std::size_t size) {
    const auto index = static_cast<std::size_t>(kind);
    FreePiece* piece = t_piecesGone ? nullptr : t_pieces.first[index];
    if (piece == nullptr)
        piece = g_left.TakeAll(index);
    if (piece == nullptr)
        piece = MakePieces(size);
    FreePiece* rest = piece != nullptr ? piece->next : nullptr;
    if (t_piecesGone)
        g_left.Add(index, rest);
    else
        t_pieces.first[index] = rest;
    return piece;
}

void GiveHandleMemory(ObjectKind kind, void* memory) {
    const auto index = static_cast<std::size_t>(kind);
    if (t_piecesGone)
        g_left.Add(index, new (memory) FreePiece(nullptr));
    else
        t_pieces.first[index] = new (memory) FreePiece(t_pieces.first[index]);
}

} // namespace melkar
