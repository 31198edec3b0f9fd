#include <MelkarCommon/platform/images/prefix_code.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace melkar {

namespace {

constexpr std::size_t kLongest = 15;
using Lengths = std::array<int, kLongest + 1>; ///< how many codes have so many bits

/// The symbols that occur, the rarest first.
std::vector<std::size_t> RarestFirst(std::span<const std::uint32_t> counts) {
    std::vector<std::size_t> symbols(counts.size());
    std::iota(symbols.begin(), symbols.end(), 0);
    std::erase_if(symbols, [&](std::size_t symbol) { return counts[symbol] == 0; });
    std::ranges::stable_sort(symbols, {}, [&](std::size_t symbol) { return counts[symbol]; });
    return symbols;
}

/// How far each leaf of the tree is from its root where the two lightest nodes are joined again and again.
/// @param weights those of the leaves, the lightest first
std::vector<int> Depths(std::vector<std::uint32_t> weights) {
    const std::size_t leaves = weights.size();
    std::vector<std::size_t> parents(2 * leaves - 1);
    // Joined nodes become heavier from one to the next, so the lightest is the next leaf or the next of them.
    std::size_t leaf = 0;
    std::size_t joined = leaves;
    while (weights.size() < parents.size()) {
        std::uint32_t weight = 0;
        for (int child = 0; child < 2; ++child) {
            const bool isLeaf = leaf < leaves && (joined == weights.size() || weights[leaf] <= weights[joined]);
            const std::size_t lightest = isLeaf ? leaf++ : joined++;
            weight += weights[lightest];
            parents[lightest] = weights.size();
        }
        weights.push_back(weight);
    }
    std::vector<int> depths(parents.size());
    for (std::size_t node = parents.size() - 1; node-- > 0;)
        depths[node] = depths[parents[node]] + 1;
    depths.resize(leaves);
    return depths;
}

/// As many codes of each length as the depths ask for, but none longer than `longest`.
Lengths LengthsOf(const std::vector<int>& depths, int longest) {
    Lengths lengths{};
    for (const int depth : depths)
        ++lengths[static_cast<std::size_t>(std::clamp(depth, 1, longest))];
    // What was cut takes room that isn't there: in parts of `longest` bits. A part becomes free where one of the
    // longest codes moves beside a shorter one, both a bit longer than that was.
    const auto last = static_cast<std::size_t>(longest);
    int taken = 0;
    for (std::size_t length = 1; length <= last; ++length)
        taken += lengths[length] << (last - length);
    for (; taken > 1 << longest; --taken) {
        std::size_t shorter = last - 1;
        while (lengths[shorter] == 0)
            --shorter;
        --lengths[shorter];
        lengths[shorter + 1] += 2;
        --lengths[last];
    }
    return lengths;
}

std::uint16_t Reversed(unsigned bits, int length) {
    unsigned reversed = 0;
    for (int i = 0; i < length; ++i, bits >>= 1U)
        reversed = reversed << 1U | (bits & 1U);
    return static_cast<std::uint16_t>(reversed);
}

} // namespace

std::vector<PrefixCode> PrefixCodesFor(std::span<const std::uint32_t> counts, int longest) {
    std::vector<PrefixCode> codes(counts.size());
    const std::vector<std::size_t> symbols = RarestFirst(counts);
    if (symbols.empty())
        return codes;
    std::vector<std::uint32_t> weights;
    for (const std::size_t symbol : symbols)
        weights.push_back(counts[symbol]);
    const Lengths lengths = LengthsOf(Depths(std::move(weights)), longest);
    auto rarest = symbols.begin();
    for (std::size_t length = kLongest; length > 0; --length)
        for (int i = 0; i < lengths[length]; ++i)
            codes[*rarest++].length = static_cast<std::uint8_t>(length);
    // The codes count up: from short to long, in the order of the symbols, so that lengths are all that a reader needs.
    unsigned bits = 0;
    for (int length = 1; length <= longest; ++length, bits <<= 1U)
        for (PrefixCode& code : codes)
            if (code.length == length)
                code.bits = Reversed(bits++, length);
    return codes;
}

} // namespace melkar
