#include "image_chart.h"

#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/support/pictures.h>
#include <MelkarCommon/support/support.h>

#include <filesystem>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

class ImageChart final : public Chart {
public:
    long Read(char* path) override {
        const HANDLE picture = LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE);
        DeleteObject(picture);
        return picture ? kOk : fs::exists(path) ? kImageFailed : kNoFile;
    }

    void Bind(const Surfaces& surfaces) override { m_surface = surfaces.isDirect ? surfaces.dc : surfaces.shared; }

    long Paint(const CRect& area, char* path) override {
        const unsigned long ground = GetRGBEx("..\\conf\\graph.cnf", "COMMON", "CANVASCOLOR_RGB", RGB(255, 255, 255));
        DrawRectangle(m_surface, area, ground, ground, 1);
        const std::string mask = MaskBeside(path);
        const int result = fs::exists(mask) ? DrawBMPTrans(m_surface, area, path, mask.c_str(), 1)
                                            : DrawBMP(m_surface, area, path, SRCCOPY, 1, kMiddle);
        return result == kImageFailed ? kImageFailed : kOk;
    }

private:
    static constexpr unsigned int kMiddle = 1 | 4;

    HDC m_surface = nullptr;
};

} // namespace

std::string MaskBeside(const std::string& picture) {
    const fs::path path = picture;
    return path.parent_path() / (path.stem().string() + "-mask" + path.extension().string());
}

std::unique_ptr<Chart> MakeImageChart(const ChartOptions&) { return std::make_unique<ImageChart>(); }

} // namespace melkar::tool
