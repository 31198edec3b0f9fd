#include "surfaces.h"

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surface.h>

#include <algorithm>

namespace melkar::fuzz {

namespace {

constexpr int kMargin = 3; // pixels behind each row of the wrapped memory
constexpr std::uint32_t kUntouched = 0x12345678;
constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr int kStride = kSide + kMargin;

} // namespace

Surfaces::~Surfaces() {
    for (const auto& [kind, surface] : m_made) {
        GetRecording(surface);
        if (const PixelView view = GetPixels(surface); view.pixels != nullptr)
            Require(view.pixels[0] >= kOpaque, "a picture has no holes");
        if (kind == 'p')
            EndDoc(surface);
        DeleteDC(surface);
    }
    for (std::size_t i = 0; i < m_memory.size(); ++i)
        Require((i % kStride < kSide) == (m_memory[i] >= kOpaque), "wrapped memory is drawn on within its rows");
}

HDC Surfaces::Of(char kind) {
    const auto found = m_made.find(kind);
    return found != m_made.end() ? found->second : m_made[kind] = Make(kind);
}

HDC Surfaces::Make(char kind) {
    switch (kind) {
    case 'm':
    case 'b':
        return CreateMemorySurface(kSide, kSide);
    case 's':
        return CreateScaledSurface(kSide, kSide, 1.5);
    case 'w':
        m_memory.assign(std::size_t{kStride} * kSide, kUntouched);
        for (int y = 0; y < kSide; ++y)
            std::fill_n(m_memory.begin() + std::ptrdiff_t{y} * kStride, kSide, 0xFFFFFFFFU);
        return WrapPixels(m_memory.data(), kSide, kSide, kStride * 4);
    case 'r':
        return CreateRecordingSurface(kSide, kSide);
    case 'v':
        return CreatePageSurface(m_visit.Expect("bin/page.svg").c_str(), PageFormat::Svg, kSide, kSide, 96);
    case 'o':
        return CreatePageSurface(m_visit.Expect("bin/outlines.svg").c_str(), PageFormat::SvgOutlines, kSide, kSide, 96);
    case 'P':
        return CreatePageSurface(m_visit.Expect("bin/page.pdf").c_str(), PageFormat::Pdf, kSide, kSide, 300);
    case 'p':
        return MakePrinted();
    default:
        return nullptr;
    }
}

/// In grey, on its first sheet.
HDC Surfaces::MakePrinted() {
    DEVMODEA settings{};
    settings.dmFields = DM_COLOR;
    settings.dmColor = DMCOLOR_MONOCHROME;
    const HDC printer = CreateDCA("WINSPOOL", m_visit.Expect("bin/printed.pdf").c_str(), nullptr, &settings);
    const DOCINFOA job{sizeof job, "Anything", nullptr, nullptr, 0};
    StartDocA(printer, &job);
    StartPage(printer);
    return printer;
}

} // namespace melkar::fuzz
