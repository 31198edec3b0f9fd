// Picture files of any bytes, loaded and painted; what can be loaded can be written in every format and read again.

#include "../input.h"
#include "../surfaces.h"

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/support/pictures.h>

namespace melkar::fuzz {

using namespace std::string_literals;

namespace {

/// Pixels of a loaded picture in a file of the format, and its size read from there.
void WriteAndRead(Visit& visit, HDC surface, int width, int height, const std::string& suffix) {
    const std::string path = visit.Expect("bin/again." + suffix);
    if (WritePicture(surface, path.c_str()) != 0)
        return; // more pixels than the format takes
    HANDLE again = LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE);
    BITMAP size{};
    const bool isRead = GetObjectA(again, sizeof size, &size) != 0;
    Require(isRead || suffix != "png", "a PNG file is read on any machine");
    Require(!isRead || (size.bmWidth == width && size.bmHeight == height),
            "a written picture is read again: " + suffix);
    DeleteObject(again);
}

void Look(Visit& visit, HANDLE picture) {
    constexpr int kMostPixels = 300 * 300; // written in each format
    BITMAP size{};
    Require(GetObjectA(picture, sizeof size, &size) != 0 && size.bmBits != nullptr, "a picture has pixels");
    if (size.bmWidth > kMostPixels / size.bmHeight)
        return;
    const HDC screen = CreateMemorySurface(1, 1);
    const HDC surface = CreateCompatibleDC(screen);
    SelectObject(surface, picture);
    for (const PictureFormat& format : PictureFormats())
        WriteAndRead(visit, surface, size.bmWidth, size.bmHeight, format.suffix);
    DeleteDC(surface);
    DeleteDC(screen);
}

/// Four bytes of how; then the file.
void DrawPicture(std::string_view input) {
    Visit visit;
    Bytes how(input.substr(0, 4));
    const std::string path = visit.Give("bin/picture", input.substr(std::min<std::size_t>(4, input.size())));
    const int width = how.Next();
    const int height = how.Next();
    const unsigned flags = how.Next();
    HANDLE picture = LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE);
    if (picture != nullptr)
        Look(visit, picture);
    DeleteObject(picture);
    picture = LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, width, height, LR_LOADFROMFILE);
    BITMAP size{};
    if (GetObjectA(picture, sizeof size, &size) != 0) // 0 leaves a side as the file has it
        Require((width == 0 || size.bmWidth == width) && (height == 0 || size.bmHeight == height),
                "a picture comes in the size asked for");
    DeleteObject(picture);
    Surfaces surfaces(visit);
    const CRect box(static_cast<int>(how.Number()), 5, width, height);
    DrawBMP(surfaces.Of('m'), box, path.c_str(), flags % 2 != 0 ? SRCCOPY : SRCAND, flags & 2, flags / 4);
    DrawBMPTrans(surfaces.Of('r'), box, path.c_str(), path.c_str(), flags & 1);
    DrawBMP(surfaces.Of('v'), box, path.c_str(), SRCCOPY, flags & 2, flags / 4);
}

std::string Little(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> 8U * static_cast<unsigned>(i));
    return text;
}

/// A bitmap file with what its head says and bytes for its pixels.
std::string Bmp(int width, int height, int bits, int compression, const std::string& rest) {
    const std::string head = Little(40, 4) + Little(static_cast<std::uint32_t>(width), 4) +
                             Little(static_cast<std::uint32_t>(height), 4) + Little(1, 2) + Little(bits, 2) +
                             Little(compression, 4) + std::string(20, '\0');
    return "BM" + Little(static_cast<std::uint32_t>(54 + rest.size()), 4) + Little(0, 4) + Little(54, 4) + head + rest;
}

/// What the library writes itself, and bitmaps of the kinds that there are.
void SeedPictures(Seeds& seeds) {
    const std::string how = {40, 30, 5, 60};
    const auto directory = std::filesystem::temp_directory_path() / "melkar-fuzz-seeds";
    std::filesystem::create_directories(directory);
    const HDC surface = CreateMemorySurface(7, 5);
    Ellipse(surface, 1, 1, 6, 4);
    for (const PictureFormat& format : PictureFormats()) {
        const std::string path = directory / (std::string("seed.") + format.suffix);
        WritePicture(surface, path.c_str());
        std::ifstream file(path, std::ios::binary);
        seeds.add(format.suffix,
                  how + std::string{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    }
    DeleteDC(surface);
    std::filesystem::remove_all(directory);
    for (const int bits : {1, 4, 8, 16, 24, 32})
        for (const int height : {3, -3})
            seeds.add("bmp-" + std::to_string(bits) + (height < 0 ? "-down" : "-up"),
                      how + Bmp(5, height, bits, 0, std::string(1100, '\x5A')));
    seeds.add("bmp-runs", how + Bmp(5, 3, 8, 1, std::string(1024, '\x11') + "\x05\x01\0\0\x05\x02\0\1"s));
    seeds.add("bmp-vast", how + Bmp(1 << 30, 1 << 30, 24, 0, "x"));
    seeds.add("svg",
              how + "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='7'><rect width='5' height='5'/></svg>");
    seeds.add("gif", how + "GIF89a\3\0\2\0\x80\0\0\xFF\xFF\xFF\0\0\0,\0\0\0\0\3\0\2\0\0\2\3\x84\x1F\5\0;"s);
    seeds.words = {"BM", "\x89PNG\r\n", "IHDR", "IDAT", "GIF89a", "RIFF", "WEBP", "\xFF\xD8\xFF", "<svg ", "II*"};
}

} // namespace

extern const Target kPictures;
const Target kPictures{"pictures", "four bytes of how, and a picture file", DrawPicture, SeedPictures};

} // namespace melkar::fuzz
