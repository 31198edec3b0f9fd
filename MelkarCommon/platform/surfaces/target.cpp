#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/surfaces/target.h>

namespace melkar {

namespace {

/// Abandons a document on which something is missing.
void Spoil(PageFile& pages) {
    pages.Abandon();
    try {
        ReportFailure("no memory to draw on a page: it is given up");
    } catch (...) {
        return; // nor for the line
    }
}

} // namespace

Bitmap* PictureTarget::Select(Bitmap& bitmap) {
    const bool isOfAnotherSurface = bitmap.owner == Owner::Surface && &bitmap != m_own.get();
    const bool isSelectedElsewhere = bitmap.selections > 0 && &bitmap != &*m_bitmap;
    return isOfAnotherSurface || isSelectedElsewhere ? nullptr : m_bitmap.Change(bitmap);
}

DeviceSize SizeOf(const Target& target) {
    return std::visit(Overloaded{
                          [](const PictureTarget& picture) { return SizeOf(picture.Now()); },
                          [](const PageTarget& page) { return page.size; },
                          [](const PrinterTarget& printer) {
                              return DeviceSize{printer.sheet.roomWidth, printer.sheet.roomHeight};
                          },
                      },
                      target);
}

double ScaleOf(Target& target) {
    Picture* picture = PictureOf(target);
    const PixelPicture* pixels = picture != nullptr ? PixelsOf(*picture) : nullptr;
    return pixels != nullptr ? pixels->Scale() : 1;
}

Backend* DrawingOn(Target& target) {
    return std::visit(Overloaded{
                          [](PictureTarget& picture) { return DrawingOn(picture.Now()); },
                          [](PageTarget& page) -> Backend* { return page.page.get(); },
                          [](PrinterTarget& printer) -> Backend* {
                              return printer.document ? &printer.document->Drawing() : nullptr;
                          },
                      },
                      target);
}

Picture* PictureOf(Target& target) {
    return std::visit(Overloaded{
                          [](PictureTarget& picture) { return &picture.Now(); },
                          [](PageTarget&) -> Picture* { return nullptr; },
                          [](PrinterTarget&) -> Picture* { return nullptr; },
                      },
                      target);
}

bool IsExposed(const Target& target) {
    return std::visit(Overloaded{
                          [](const PictureTarget& picture) { return IsExposed(picture.Now()); },
                          [](const PageTarget&) { return false; },
                          [](const PrinterTarget&) { return false; },
                      },
                      target);
}

std::size_t DrawnOn(const Target& target) {
    return std::visit(Overloaded{
                          [](const PictureTarget& picture) { return DrawnOn(picture.Now()); },
                          [](const PageTarget&) { return std::size_t{0}; },
                          [](const PrinterTarget&) { return std::size_t{0}; },
                      },
                      target);
}

void TakeBack(Target& target, std::size_t drawn) {
    std::visit(Overloaded{
                   [&](PictureTarget& picture) { TakeBack(picture.Now(), drawn); },
                   [](PageTarget& page) { Spoil(*page.page); },
                   [](PrinterTarget& printer) {
                       if (printer.document)
                           Spoil(*printer.document->pages);
                   },
               },
               target);
}

Bitmap* SelectOn(Target& target, Bitmap& bitmap) {
    return std::visit(Overloaded{
                          [&](PictureTarget& picture) { return picture.Select(bitmap); },
                          [](PageTarget&) -> Bitmap* { return nullptr; },
                          [](PrinterTarget&) -> Bitmap* { return nullptr; },
                      },
                      target);
}

bool Finish(Target& target) {
    return std::visit(Overloaded{
                          [](PictureTarget&) { return true; },
                          [](PageTarget& page) { return page.page->Finish(); },
                          [](PrinterTarget&) { return true; },
                      },
                      target);
}

} // namespace melkar
