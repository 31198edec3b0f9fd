// Codes of bits, as numbers.

#include <MelkarCommon/platform/images/prefix_code.h>

#include <gtest/gtest.h>

namespace {

using melkar::PrefixCode;

TEST(PrefixCode, IsShortForWhatIsFrequent) {
    // By hand: 0 for the one of 4, 10 for that of 2, 110 and 111 for the two of 1; the first bit stands lowest.
    const std::uint32_t counts[] = {1, 0, 2, 4, 1};
    const PrefixCode expected[] = {{0b011, 3}, {0, 0}, {0b01, 2}, {0, 1}, {0b111, 3}};
    const auto codes = melkar::PrefixCodesFor(counts, 15);
    for (std::size_t symbol = 0; symbol < std::size(counts); ++symbol) {
        EXPECT_EQ(codes[symbol].bits, expected[symbol].bits) << symbol;
        EXPECT_EQ(codes[symbol].length, expected[symbol].length) << symbol;
    }
    EXPECT_EQ(melkar::PrefixCodesFor(std::vector<std::uint32_t>{0, 5}, 15)[1].length, 1) << "one alone";
}

TEST(PrefixCode, IsNeverTooLongAndLeavesNoBitsUnused) {
    std::vector<std::uint32_t> counts{1, 1}; // each as frequent as the two before it: a code one bit longer for each
    while (counts.size() < 40)
        counts.push_back(counts.back() + counts[counts.size() - 2]);
    for (const auto& [symbols, longest] : {std::pair(16, 15), std::pair(40, 15), std::pair(19, 7)}) {
        double room = 0;
        int last = longest;
        for (const PrefixCode& code : melkar::PrefixCodesFor(std::span(counts).first(symbols), longest)) {
            EXPECT_LE(code.length, last) << "more bits for one that is more frequent, or too many";
            last = code.length;
            room += 1.0 / (1 << code.length);
        }
        EXPECT_EQ(room, 1) << symbols;
    }
}

} // namespace
