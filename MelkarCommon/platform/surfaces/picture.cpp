#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/pixel_grid.h>
#include <MelkarCommon/platform/surfaces/picture.h>

#include <cmath>

namespace melkar {

PixelPicture::PixelPicture(const PixelBuffer& memory) : m_buffer(memory) {}

PixelPicture::PixelPicture(OwnPixels pixels, Color color)
    : m_own(std::move(pixels)), m_buffer(m_own.Buffer()), m_pending{color, {0, 0, m_buffer.width, m_buffer.height}},
      m_isExposed(false) {}

PixelPicture::PixelPicture(OwnPixels pixels, OwnPixels file)
    : m_own(std::move(pixels)), m_buffer(m_own.Buffer()), m_file(std::move(file)) {}

/// A scale of 1 or more leaves no other size of as many pixels.
DeviceSize PixelPicture::Size() const {
    if (m_buffer.scale == 1)
        return {m_buffer.width, m_buffer.height};
    const auto units = [this](int pixels) { return static_cast<int>(std::lround(pixels / m_buffer.scale)); };
    return {units(m_buffer.width), units(m_buffer.height)};
}

Backend& PixelPicture::Drawing() {
    if (m_file.AreThere())
        m_file = {};
    if (m_backend == nullptr)
        m_backend = MakePixelBackend(m_buffer, m_isExposed ? nullptr : &m_pending);
    return *m_backend;
}

const PixelBuffer& PixelPicture::Shown() {
    if (!IsEmptyRect(m_pending.rect))
        Drawing().Flush();
    return m_buffer;
}

const PixelBuffer& PixelPicture::ShownFor(DWORD operation) {
    if (operation == SRCCOPY || !m_file.AreThere())
        return Shown();
    if (m_file.Buffer().width != m_buffer.width || m_file.Buffer().height != m_buffer.height)
        m_file = Resized(m_file.Buffer(), m_buffer.width, m_buffer.height, operation);
    return m_file.AreThere() ? m_file.Buffer() : m_buffer;
}

bool PixelPicture::HasMoreInFile() const {
    const PixelBuffer& file = m_file.Buffer();
    return m_file.AreThere() && file.width >= m_buffer.width && file.height >= m_buffer.height;
}

PixelPart PixelPicture::ShownFor(DWORD operation, const RECT& part, double scale) {
    if (scale == 1 || !HasMoreInFile())
        return {ShownFor(operation), m_buffer.scale == 1 ? part : PixelGrid(m_buffer.scale).Edges(part)};
    const PixelGrid columns(1.0 * m_file.Buffer().width / m_buffer.width);
    const PixelGrid rows(1.0 * m_file.Buffer().height / m_buffer.height);
    return {m_file.Buffer(),
            {columns.Edge(part.left), rows.Edge(part.top), columns.Edge(part.right), rows.Edge(part.bottom)}};
}

const PixelBuffer& PixelPicture::Expose() {
    Shown();
    if (!m_isExposed)
        m_backend.reset(); // it lets fills wait
    m_isExposed = true;
    return m_buffer;
}

BITMAP PixelPicture::Description() const {
    const auto [width, height] = Size();
    const bool isShown = m_isExposed && m_buffer.scale == 1;
    return {0, width, height, m_buffer.stride * 4, 1, 32, isShown ? m_buffer.pixels : nullptr};
}

Backend& RecordPicture::Drawing() {
    if (m_backend == nullptr)
        m_backend = MakeRecordingBackend(m_ops, m_size.width, m_size.height);
    return *m_backend;
}

void RecordPicture::Recover(std::size_t count) {
    m_backend.reset();
    if (count < m_ops.size())
        m_ops.erase(m_ops.begin() + static_cast<std::ptrdiff_t>(count), m_ops.end());
}

OwnPixels PixelsFor(DeviceSize size, double scale) {
    const PixelGrid grid(scale);
    const int width = grid.Edge(size.width);
    const int height = grid.Edge(size.height);
    return IsPictureSize(width, height) ? OwnPixels(width, height, scale) : OwnPixels();
}

Bitmap& StockBitmap() {
    static Bitmap none(Owner::Stock, std::in_place_type<NoPicture>);
    return none;
}

std::unique_ptr<Bitmap> MakePixelBitmap(DeviceSize size, double scale, COLORREF color, Owner owner) {
    OwnPixels pixels = PixelsFor(size, scale);
    if (!pixels.AreThere())
        return nullptr;
    return std::make_unique<Bitmap>(owner, std::in_place_type<PixelPicture>, std::move(pixels), ToColor(color));
}

std::unique_ptr<Bitmap> MakeRecordBitmap(DeviceSize size, COLORREF ground, Owner owner) {
    return std::make_unique<Bitmap>(owner, std::in_place_type<RecordPicture>, size, ToColor(ground));
}

std::unique_ptr<Bitmap> MakeSuitingBitmap(const Device& device, DeviceSize size) {
    return std::visit(
        Overloaded{
            [&](const ScreenDevice& screen) { return MakePixelBitmap(size, screen.scale, kBlack, Owner::Caller); },
            [&](const PaperDevice&) { return MakeRecordBitmap(size, kBlack, Owner::Caller); },
            [&](const RecordDevice&) { return MakeRecordBitmap(size, kBlack, Owner::Caller); },
        },
        device.kind);
}

DeviceSize SizeOf(const Picture& picture) {
    return std::visit(Overloaded{
                          [](const NoPicture&) {
                              return DeviceSize{0, 0};
                          },
                          [](const PixelPicture& pixels) { return pixels.Size(); },
                          [](const RecordPicture& record) { return record.Size(); },
                      },
                      picture);
}

Backend* DrawingOn(Picture& picture) {
    return std::visit(Overloaded{
                          [](NoPicture&) -> Backend* { return nullptr; },
                          [](PixelPicture& pixels) -> Backend* { return &pixels.Drawing(); },
                          [](RecordPicture& record) -> Backend* { return &record.Drawing(); },
                      },
                      picture);
}

bool IsExposed(const Picture& picture) {
    return std::visit(Overloaded{
                          [](const NoPicture&) { return false; },
                          [](const PixelPicture& pixels) { return pixels.IsExposed(); },
                          [](const RecordPicture&) { return false; },
                      },
                      picture);
}

PixelPicture* PixelsOf(Picture& picture) {
    return std::visit(Overloaded{
                          [](NoPicture&) -> PixelPicture* { return nullptr; },
                          [](PixelPicture& pixels) { return &pixels; },
                          [](RecordPicture&) -> PixelPicture* { return nullptr; },
                      },
                      picture);
}

std::size_t DrawnOn(const Picture& picture) {
    return std::visit(Overloaded{
                          [](const NoPicture&) { return std::size_t{0}; },
                          [](const PixelPicture&) { return std::size_t{0}; },
                          [](const RecordPicture& record) { return record.Ops().size(); },
                      },
                      picture);
}

void TakeBack(Picture& picture, std::size_t drawn) {
    std::visit(Overloaded{
                   [](NoPicture&) {},
                   [](PixelPicture& pixels) { pixels.Recover(); },
                   [&](RecordPicture& record) { record.Recover(drawn); },
               },
               picture);
}

RecordPicture* RecordOf(Picture& picture) { return std::get_if<RecordPicture>(&picture); }

} // namespace melkar
