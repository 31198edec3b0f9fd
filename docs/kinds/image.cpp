#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

int main() {
    const melkar::HostDirectory here("bin"); // where the log is: log/graph.log beside it
    const melkar::ScopedSurface view(CreateMemorySurface(384, 384));
    const CRect area(0, 0, 384, 384);
    DrawRectangle(view, area, RGB(255, 255, 255), RGB(255, 255, 255), 1);
    // The picture shows where the mask is white. One without a mask: DrawBMP(view, area, path, SRCCOPY, 1, 1 | 4).
    if (DrawBMPTrans(view, area, "medal.bmp", "medal-mask.bmp", 1) == melkar::kImageFailed)
        return std::fprintf(stderr, "medal.bmp can't be read\n"), 1;
    if (WritePng(view, "image.png") != 0)
        return std::fprintf(stderr, "%s\n", melkar::LastFailure()), 1;
}
