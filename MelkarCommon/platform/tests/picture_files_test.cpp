// Pixels in picture files of each format: what the files hold, and what is told of those that can't be.

#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/last_failure.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/platform/tests/told.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <fstream>
#include <thread>
#include <vector>
#include <webp/decode.h>

namespace {

using melkar::CairoSurface;
using Pixels = std::vector<std::uint32_t>;

constexpr int kWidth = 3;
constexpr int kHeight = 3;

Pixels DecodePng(const std::string& path) {
    const CairoSurface read(cairo_image_surface_create_from_png(path.c_str()));
    Pixels pixels;
    for (int y = 0; y < cairo_image_surface_get_height(read.get()); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(
            cairo_image_surface_get_data(read.get()) + std::ptrdiff_t{y} * cairo_image_surface_get_stride(read.get()));
        pixels.insert(pixels.end(), row, row + cairo_image_surface_get_width(read.get()));
    }
    return pixels;
}

Pixels DecodeWebp(const std::string& bytes) {
    int width = 0;
    int height = 0;
    std::uint8_t* argb =
        WebPDecodeARGB(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), &width, &height);
    Pixels pixels;
    for (int i = 0; i < width * height; ++i)
        pixels.push_back(argb[4 * i] << 24U | argb[4 * i + 1] << 16U | argb[4 * i + 2] << 8U | argb[4 * i + 3]);
    WebPFree(argb);
    return pixels;
}

TEST(PictureFiles, HoldThePixelsOpaque) {
    const TempWorkdir work;
    // a host's memory: rows with a fourth pixel that isn't the picture's, highest bytes that mean nothing, a row twice
    Pixels memory{0x00FF0000, 0x7F00FF00, 0x000000FF, 0x00ABCDEF, 0xFF000000, 0x00FFFFFF,
                  0x00123456, 0x00ABCDEF, 0xFF000000, 0x00FFFFFF, 0x00123456, 0x00000000};
    const Surface surface(WrapPixels(memory.data(), kWidth, kHeight, 4 * (kWidth + 1)));
    const Pixels seen{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF000000, 0xFFFFFFFF,
                      0xFF123456, 0xFF000000, 0xFFFFFFFF, 0xFF123456};
    for (const PictureFormat& format : PictureFormats()) {
        const std::string path = work.Path("conf/a.") + format.suffix;
        EXPECT_EQ(WritePicture(surface, path.c_str()), 0);
        const bool isPng = std::string(format.suffix) == "png";
        EXPECT_EQ(isPng ? DecodePng(path) : DecodeWebp(work.Read(std::string("conf/a.") + format.suffix)), seen)
            << format.name;
    }
    EXPECT_EQ(WritePicture(surface, work.Path("conf/b.PNG").c_str()), 0);
    EXPECT_EQ(work.Read("conf/b.PNG"), work.Read("conf/a.png"));
    EXPECT_EQ(WritePicture(surface, work.Path("conf/c.png").c_str(), "WebP"), 0);
    EXPECT_EQ(work.Read("conf/c.png"), work.Read("conf/a.webp")) << "the format named counts";
}

TEST(PictureFiles, OfAPageKeepTheirAlpha) {
    const TempWorkdir work;
    Pixels pixels{0, 0x01010001, 0x7F7F0140, 0xFFFE0180, 0x7F7F0140, 0x80000080, 0x40400020, 0x40400020, 0, 0, 0, 0};
    std::ofstream(work.Path("conf/a.png")) << melkar::EncodePng({pixels.data(), 4, 3, 4}, true);
    EXPECT_EQ(DecodePng(work.Path("conf/a.png")), pixels) << "colours are multiplied by alpha here, not in the file";
}

TEST(PictureFiles, TellWhyTheyAreNot) {
    const std::tuple<const char*, const char*, const char*, int, int, const char*> cases[] = {
        {"a suffix of no format", "a.bmp", nullptr, 1, ENOTSUP, "picture file [a.bmp] not written: Operation not"},
        {"no suffix", "png", nullptr, 1, ENOTSUP, "picture file [png]"},
        {"a format that is none", "a.png", "bmp", 1, ENOTSUP, "picture file [a.png]"},
        {"no path", nullptr, "png", 1, EINVAL, "PNG file [] not written: Invalid"},
        {"no directory", "nowhere/a.webp", nullptr, 1, ENOENT, "WebP file [nowhere/a.webp] not written: No such file"},
        {"wider than the format takes", "former.webp", nullptr, 16384, EFBIG, "WebP file [former.webp] not written"},
    };
    const TempWorkdir work;
    work.Write("bin/former.webp", "former");
    for (const auto& [why, path, format, width, error, words] : cases) {
        const Told told;
        EXPECT_EQ(WritePicture(Surface(CreateMemorySurface(width, 1)), path, format), -1) << why;
        EXPECT_EQ(errno, error) << why;
        EXPECT_THAT(told.Lines(), testing::StartsWith(words)) << why;
        EXPECT_EQ(melkar::LastFailure() + std::string("\n"), told.Lines()) << why;
    }
    WritePng(Surface(CreateMemorySurface(9, 9)), (std::string(505 - 10, 'a') + "\u00e9.png").c_str()); // "PNG file ["
    EXPECT_EQ(melkar::LastFailure(), "PNG file [" + std::string(495, 'a') + "\u00e9.png");
    EXPECT_EQ(CreatePageSurface("nowhere/page", PageFormat::Pdf, 9, 9, 96), nullptr);
    EXPECT_STREQ(melkar::LastFailure(), "PDF file [nowhere/page] not written: No such file or directory");
    EXPECT_EQ(CreatePageSurface("page", PageFormat::Pdf, 0, 9, 96), nullptr);
    EXPECT_STREQ(melkar::LastFailure(), "no page has such a size");
    std::thread([] { EXPECT_STREQ(melkar::LastFailure(), "") << "of another thread"; }).join();
    EXPECT_EQ(WritePng(Surface(CreateMemorySurface(9, 9)), "a.png"), 0);
    EXPECT_STREQ(melkar::LastFailure(), "");
    EXPECT_EQ(work.Read("bin/former.webp"), "former");
}

} // namespace
