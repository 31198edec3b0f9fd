#include <MelkarCommon/platform/images/deflate.h>

#include <algorithm>
#include <cstring>
#include <utility>

/// @file
/// A stream is a head of two bytes, blocks, and a checksum.

namespace melkar {

namespace {

constexpr int kGoodLength = 64; ///< of a match that is taken without a look at others
constexpr int kTries = 16;      ///< places that are compared with one
constexpr int kHashBits = 15;
constexpr std::size_t kPieces = 4096; ///< of a block: codes follow what is drawn, but take room each time
constexpr std::size_t kRoom = 2 * Piece::kFarthest;

/// The same for places with the same three bytes, mostly others for others.
std::size_t HashOf(const std::uint8_t* bytes) {
    constexpr std::uint32_t kScatter = 0x9E3779B1;
    std::uint32_t four = 0;
    std::memcpy(&four, bytes, sizeof four);
    return (four << 8U) * kScatter >> (32 - kHashBits);
}

} // namespace

Deflate::Deflate()
    : m_window(kRoom + Piece::kLongest), m_newest(std::size_t{1} << kHashBits), m_before(Piece::kFarthest) {
    m_pieces.reserve(kPieces);
    m_ready.Bytes() = "\x78\x9C";
}

void Deflate::Add(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), kRoom - static_cast<std::size_t>(m_end));
        std::copy_n(bytes.begin(), count, m_window.begin() + m_end);
        m_end += static_cast<int>(count);
        bytes = bytes.subspan(count);
        if (m_end == kRoom) {
            Compress(m_end - Piece::kLongest - 1); // no match ends early for want of bytes
            ForgetOldest();
        }
    }
}

void Deflate::Finish() {
    Compress(m_end);
    EndBlock(true);
    m_ready.FillByte();
    for (const std::uint64_t sum : {m_sumOfSums, m_sum})
        Ready() += {static_cast<char>(sum >> 8U), static_cast<char>(sum)};
}

void Deflate::ForgetOldest() {
    const int count = m_at - Piece::kFarthest;
    std::copy(m_window.begin() + count, m_window.begin() + m_end, m_window.begin());
    for (int* place : {&m_at, &m_end, &m_kept})
        *place -= count;
    m_forgotten += static_cast<unsigned>(count);
}

void Deflate::Compress(int end) {
    while (m_at < end) {
        if (m_at > 0 && EqualBytes(m_at, 1) == Piece::kLongest) {
            PutMatch({Piece::kLongest, 1}); // nothing is better
            continue;
        }
        Match match = FindAndKeep(m_at, Piece::kShortest - 1);
        while (match.distance != 0 && match.length < kGoodLength) {
            // A longer one that begins a byte later is worth that byte.
            const Match later = FindAndKeep(m_at + 1, match.length);
            if (later.distance == 0)
                break;
            PutByte();
            match = later;
        }
        if (match.distance == 0)
            PutByte();
        else
            PutMatch(match);
    }
}

/// How many bytes, up to the longest match, are those that stand so far before.
int Deflate::EqualBytes(int at, int distance) const {
    const int room = std::min(Piece::kLongest, m_end - at);
    const std::uint8_t* const here = &m_window[static_cast<std::size_t>(at)];
    const std::uint8_t* const there = here - distance;
    constexpr int kAtOnce = sizeof(std::uint64_t);
    int count = 0;
    while (count + kAtOnce <= room && std::memcmp(here + count, there + count, kAtOnce) == 0)
        count += kAtOnce;
    while (count < room && here[count] == there[count])
        ++count;
    return count;
}

/// The longest match that is longer than `least`; its distance is 0 if there is none.
Deflate::Match Deflate::FindMatch(int at, int least) const {
    Match best{least, 0};
    const std::uint8_t* const here = &m_window[static_cast<std::size_t>(at)];
    std::uint16_t place = m_newest[HashOf(here)];
    int nearer = 0;
    for (int tries = kTries; tries > 0; --tries) {
        const auto distance = static_cast<std::uint16_t>(at + m_forgotten - place);
        // Places are kept by their low bits, and for a while only: one of long ago may seem near, or nearer than the
        // last.
        if (distance <= nearer || distance > std::min(at, Piece::kFarthest))
            break;
        if (here[best.length] == here[best.length - distance])
            if (const int length = EqualBytes(at, distance); length > best.length)
                best = {length, distance};
        if (best.length >= kGoodLength)
            break;
        nearer = distance;
        place = m_before[place % Piece::kFarthest];
    }
    return best;
}

Deflate::Match Deflate::FindAndKeep(int at, int least) {
    const Match match = FindMatch(at, least);
    KeepUntil(at + 1);
    return match;
}

/// The places before `end` can be found from now on.
void Deflate::KeepUntil(int end) {
    for (; m_kept < end; ++m_kept) {
        const auto place = static_cast<std::uint16_t>(m_kept + m_forgotten);
        std::uint16_t& newest = m_newest[HashOf(&m_window[static_cast<std::size_t>(m_kept)])];
        m_before[place % Piece::kFarthest] = newest;
        newest = place;
    }
}

void Deflate::PutByte() { Put({m_window[static_cast<std::size_t>(m_at)], 0}, 1); }

void Deflate::PutMatch(Match match) {
    // Bytes that are many times there: the places between would hide others, and take time.
    if (match.length < Piece::kLongest)
        KeepUntil(m_at + match.length);
    Put({static_cast<std::uint16_t>(match.length), static_cast<std::uint16_t>(match.distance)}, match.length);
    m_kept = std::max(m_kept, m_at);
}

/// @param count how many bytes the piece stands for
void Deflate::Put(Piece piece, int count) {
    if (m_pieces.size() == kPieces)
        EndBlock(false);
    m_pieces.push_back(piece);
    const std::uint8_t* const bytes = &m_window[static_cast<std::size_t>(m_at)];
    if (piece.distance == 1 && bytes[0] == 0)
        m_sumOfSums += m_sum * static_cast<unsigned>(count);
    else
        for (int i = 0; i < count; ++i)
            m_sumOfSums += m_sum += bytes[i];
    m_at += count;
}

void Deflate::EndBlock(bool isLast) {
    constexpr unsigned kModulo = 65521;
    WriteBlock(m_pieces, isLast, m_ready);
    m_pieces.clear();
    m_sum %= kModulo;
    m_sumOfSums %= kModulo;
}

std::string Deflated(std::string_view bytes) {
    Deflate deflate;
    deflate.Add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    deflate.Finish();
    return std::move(deflate.Ready());
}

} // namespace melkar
