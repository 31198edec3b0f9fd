#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/pixel_grid.h>
#include <MelkarCommon/platform/surfaces/picture.h>

#include <atomic>
#include <cmath>
#include <new>

namespace melkar {

/// For callers that keep it while the draft becomes pixels: a call may draw much, and copy the picture onto itself.
class PixelPicture::DraftBackend final : public Backend {
public:
    explicit DraftBackend(PixelPicture& picture) : m_picture(picture), m_clip(picture.m_draft->Whole()) {}

    void Flush() override { Now().Flush(); }
    void SetClip(const RECT& clip) override {
        m_clip = clip;
        Now().SetClip(clip);
    }
    void FillRect(const RECT& rect, Color color) override { Now().FillRect(rect, color); }
    void FillShape(const Shape& shape, Color color) override { Now().FillShape(shape, color); }
    void StrokeShape(const Shape& shape, const Stroke& stroke) override { Now().StrokeShape(shape, stroke); }
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override {
        Now().StrokePolyline(points, stroke);
    }
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override {
        Now().PaintText(layout, line, at, escapement, color, clip);
    }
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override {
        if (pixels.scale != 1 || Draft::IsTooLarge(source))
            Become();
        Now().Blit(target, pixels, source, operation);
    }

private:
    Backend& Now() {
        if (m_picture.m_draft != nullptr && m_picture.m_draft->IsLong())
            Become();
        return m_picture.m_draft != nullptr ? m_picture.m_draft->Drawing() : m_picture.DrawingPixels();
    }

    /// In the middle of a call, under its clip.
    void Become() {
        if (m_picture.m_draft == nullptr)
            return;
        m_picture.BecomePixels();
        m_picture.DrawingPixels().SetClip(m_clip);
    }

    PixelPicture& m_picture;
    RECT m_clip;
};

PixelPicture::PixelPicture(DeviceSize size, Color ground)
    : m_buffer{nullptr, size.width, size.height, size.width}, m_draft(std::make_unique<Draft>(size, ground)),
      m_draftBackend(std::make_unique<DraftBackend>(*this)), m_isExposed(false) {}

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

std::uint64_t PixelPicture::NextId() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

Backend& PixelPicture::Drawing() {
    ++m_state.calls;
    return m_draft != nullptr ? *m_draftBackend : DrawingPixels();
}

Backend& PixelPicture::DrawingPixels() {
    if (m_file.AreThere())
        m_file = {};
    if (m_backend == nullptr)
        m_backend = MakePixelBackend(m_buffer, m_isExposed ? nullptr : &m_pending);
    return *m_backend;
}

/// Throws without memory, and stays what it is.
void PixelPicture::BecomePixels() {
    if (m_draft == nullptr)
        return;
    const auto [pixels, width, height, stride, scale] = m_buffer;
    m_own = OwnPixels(width, height);
    if (!m_own.AreThere())
        throw std::bad_alloc();
    m_buffer = m_own.Buffer();
    try {
        m_draft->Play(DrawingPixels(), {0, 0}, m_draft->Whole());
    } catch (...) {
        m_backend.reset();
        m_buffer = {pixels, width, height, stride, scale};
        m_own = {};
        throw;
    }
    m_draft.reset();
}

void PixelPicture::Recover(std::size_t count) {
    if (m_draft != nullptr)
        m_draft->Recover(count);
    m_backend.reset();
}

const PixelBuffer& PixelPicture::Shown() {
    BecomePixels();
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
        m_backend = MakeRecordingBackend(m_ops, m_size.width, m_size.height, Masks::Drop,
                                         KeepsSteps() ? Covered::Keep : Covered::Drop);
    if (KeepsSteps()) {
        m_stepOf.resize(m_ops.size(), m_drawing);
        m_drawing = RunningStep();
    }
    return *m_backend;
}

void RecordPicture::Recover(std::size_t count) {
    m_backend.reset();
    if (count < m_ops.size())
        m_ops.erase(m_ops.begin() + static_cast<std::ptrdiff_t>(count), m_ops.end());
    if (count < m_stepOf.size())
        m_stepOf.resize(count);
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

std::unique_ptr<Bitmap> MakeRecordBitmap(DeviceSize size, COLORREF ground, Owner owner, StepNames steps) {
    return std::make_unique<Bitmap>(owner, std::in_place_type<RecordPicture>, size, ToColor(ground), steps);
}

namespace {

/// At another scale frames are more than fills, and edges depend on what they belong to: there pixels are drawn at
/// once.
std::unique_ptr<Bitmap> MakeDraftBitmap(DeviceSize size) {
    if (!IsPictureSize(size.width, size.height))
        return nullptr;
    return std::make_unique<Bitmap>(Owner::Caller, std::in_place_type<PixelPicture>, size, ToColor(kBlack));
}

} // namespace

std::unique_ptr<Bitmap> MakeSuitingBitmap(const Device& device, DeviceSize size) {
    return std::visit(
        Overloaded{
            [&](const ScreenDevice& screen) {
                return screen.scale == 1 ? MakeDraftBitmap(size)
                                         : MakePixelBitmap(size, screen.scale, kBlack, Owner::Caller);
            },
            [&](const PaperDevice&) { return MakeRecordBitmap(size, kBlack, Owner::Caller); },
            [&](const RecordDevice&) { return MakeRecordBitmap(size, kBlack, Owner::Caller); },
            [&](const TraceDevice&) { return MakeRecordBitmap(size, kBlack, Owner::Caller, StepNames::Keep); },
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
                          [](const PixelPicture& pixels) { return pixels.Drawn(); },
                          [](const RecordPicture& record) { return record.Ops().size(); },
                      },
                      picture);
}

void TakeBack(Picture& picture, std::size_t drawn) {
    std::visit(Overloaded{
                   [](NoPicture&) {},
                   [&](PixelPicture& pixels) { pixels.Recover(drawn); },
                   [&](RecordPicture& record) { record.Recover(drawn); },
               },
               picture);
}

RecordPicture* RecordOf(Picture& picture) { return std::get_if<RecordPicture>(&picture); }

} // namespace melkar
