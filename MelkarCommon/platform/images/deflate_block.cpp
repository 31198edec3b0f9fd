#include <MelkarCommon/platform/images/deflate_block.h>
#include <MelkarCommon/platform/images/prefix_code.h>

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

/// @file
/// Symbols stand for bytes, and, with some bits behind them, for lengths and distances. How many bits the code of each
/// has is told first, by symbols as well.

namespace melkar {

namespace {

constexpr std::size_t kEnd = 256;      ///< of the block: behind the bytes
constexpr std::size_t kLiterals = 286; ///< symbols of bytes, the end and lengths
constexpr std::size_t kDistances = 30;
constexpr int kLongestCode = 15;

struct Symbol {
    std::size_t symbol;
    int bits = 0; ///< behind it
    int rest = 0; ///< these
};

using Codes = std::vector<PrefixCode>;

/// A symbol tells how large a number is and its highest bits: the first one and `more`.
Symbol SymbolOf(int number, int more) {
    const auto width = static_cast<int>(std::bit_width(static_cast<unsigned>(number)));
    const int bits = std::max(0, width - 1 - more);
    return {static_cast<std::size_t>((bits << more) + (number >> bits)), bits, number & ((1 << bits) - 1)};
}

Symbol LiteralOf(const Piece& piece) {
    if (piece.distance == 0)
        return {piece.lengthOrByte};
    if (piece.lengthOrByte == Piece::kLongest)
        return {kLiterals - 1};
    Symbol length = SymbolOf(piece.lengthOrByte - Piece::kShortest, 2);
    length.symbol += kEnd + 1;
    return length;
}

Symbol DistanceOf(const Piece& piece) { return SymbolOf(piece.distance - 1, 1); }

/// Those of literals, then those of distances.
std::pair<Codes, Codes> CodesFor(std::span<const Piece> pieces) {
    std::array<std::uint32_t, kLiterals> literals{};
    std::array<std::uint32_t, kDistances> distances{};
    literals[kEnd] = 1;
    for (const Piece& piece : pieces) {
        ++literals[LiteralOf(piece).symbol];
        if (piece.distance != 0)
            ++distances[DistanceOf(piece).symbol];
    }
    if (std::ranges::count(distances, 0U) == kDistances)
        distances[0] = 1; // some readers want one
    return {PrefixCodesFor(literals, kLongestCode), PrefixCodesFor(distances, kLongestCode)};
}

/// Lengths of codes; equal ones that follow each other are counted.
std::vector<Symbol> TellLengths(std::span<const PrefixCode> codes) {
    struct Repeat {
        std::size_t symbol;
        int least;
        int bits;
    };
    constexpr Repeat kSame{16, 3, 2};
    constexpr Repeat kZeros{17, 3, 3};
    constexpr Repeat kManyZeros{18, 11, 7};
    std::vector<Symbol> told;
    for (auto code = codes.begin(); code != codes.end();) {
        const std::uint8_t length = code->length;
        const auto other = std::find_if(code, codes.end(), [&](PrefixCode next) { return next.length != length; });
        auto count = static_cast<int>(other - code);
        code = other;
        if (length != 0) {
            told.push_back({length});
            --count;
        }
        while (count >= kSame.least) {
            const Repeat& repeat = length != 0 ? kSame : count < kManyZeros.least ? kZeros : kManyZeros;
            const int more = std::min(count - repeat.least, (1 << repeat.bits) - 1);
            told.push_back({repeat.symbol, repeat.bits, more});
            count -= repeat.least + more;
        }
        told.insert(told.end(), static_cast<std::size_t>(count), {length});
    }
    return told;
}

void WriteSymbol(const Codes& codes, const Symbol& symbol, BitWriter& to) {
    to.Write(codes[symbol.symbol].bits, codes[symbol.symbol].length);
    to.Write(static_cast<std::uint32_t>(symbol.rest), symbol.bits);
}

/// All codes are told, whether they occur or not: that takes some bits.
void WriteCodes(Codes codes, const Codes& distances, BitWriter& to) {
    constexpr std::size_t kOrder[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    constexpr int kLongestTold = 7;
    codes.insert(codes.end(), distances.begin(), distances.end());
    const std::vector<Symbol> told = TellLengths(codes);
    std::array<std::uint32_t, std::size(kOrder)> counts{};
    for (const Symbol& symbol : told)
        ++counts[symbol.symbol];
    const Codes toldCodes = PrefixCodesFor(counts, kLongestTold);
    to.Write(kLiterals - 257, 5);
    to.Write(kDistances - 1, 5);
    to.Write(std::size(kOrder) - 4, 4);
    for (const std::size_t symbol : kOrder)
        to.Write(toldCodes[symbol].length, 3);
    for (const Symbol& symbol : told)
        WriteSymbol(toldCodes, symbol, to);
}

} // namespace

void BitWriter::Write(std::uint32_t bits, int count) {
    m_bits |= std::uint64_t{bits} << m_count;
    for (m_count += count; m_count >= 8; m_count -= 8, m_bits >>= 8U)
        m_bytes.push_back(static_cast<char>(m_bits));
}

void WriteBlock(std::span<const Piece> pieces, bool isLast, BitWriter& to) {
    constexpr std::uint32_t kWithCodes = 2;
    const auto [literals, distances] = CodesFor(pieces);
    to.Write(isLast ? 1 : 0, 1);
    to.Write(kWithCodes, 2);
    WriteCodes(literals, distances, to);
    for (const Piece& piece : pieces) {
        WriteSymbol(literals, LiteralOf(piece), to);
        if (piece.distance != 0)
            WriteSymbol(distances, DistanceOf(piece), to);
    }
    WriteSymbol(literals, {kEnd}, to);
}

} // namespace melkar
