// Compressed streams, as another library reads them.

#include <MelkarCommon/platform/images/deflate.h>
#include <MelkarCommon/platform/tests/inflated.h>

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <utility>

namespace {

using std::string;

string Compressed(const string& bytes, std::size_t atOnce) {
    melkar::Deflate deflate;
    string stream;
    for (std::size_t at = 0; at < bytes.size(); at += atOnce) {
        const string part = bytes.substr(at, atOnce);
        deflate.Add({reinterpret_cast<const std::uint8_t*>(part.data()), part.size()});
        stream += std::exchange(deflate.Ready(), {});
    }
    deflate.Finish();
    return stream + deflate.Ready();
}

string Noise(std::size_t count) {
    static std::mt19937 random(7);
    string noise;
    while (noise.size() < count)
        noise += static_cast<char>(random());
    return noise;
}

/// Noise, and parts of it again: of each length that a match has, and longer.
string Repeats() {
    std::mt19937 random(11);
    string bytes = Noise(40000);
    for (std::size_t length = 2; length < 600; ++length)
        bytes += bytes.substr(bytes.size() - 600 - random() % 32000, length) + Noise(2);
    return bytes;
}

TEST(Deflate, HoldsWhatWasAddedInFewBytes) {
    const string noise = Noise(32768);
    const struct {
        const char* why;
        string bytes;
        std::size_t least, most; ///< bytes of the stream
    } cases[] = {
        {"a byte: no match", "a", 9, 60},
        {"a run through many windows, and what stands behind it", string(999999, '\0') + "a", 500, 1500},
        {"a run of another byte, whose sum isn't that of zeros", string(300000, '\xFF'), 150, 600},
        {"noise: several blocks without a match, hardly longer", noise, 32768, 33500},
        {"the farthest match", noise + noise, 32768, 34500},
        {"a byte too far", noise + "a" + noise, 65536, 67000},
        {"all lengths and many distances", Repeats(), 40000, 50000},
    };
    for (const auto& [why, bytes, least, most] : cases) {
        const string stream = Compressed(bytes, 1000);
        EXPECT_TRUE(Inflated(stream) == bytes) << why;
        EXPECT_THAT(stream.size(), testing::AllOf(testing::Ge(least), testing::Le(most))) << why;
        EXPECT_TRUE(Compressed(bytes, 77777) == stream) << why << ": whatever parts it comes in";
    }
}

} // namespace
