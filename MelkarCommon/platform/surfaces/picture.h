#pragma once

#include <MelkarCommon/platform/pixels/pending_fill.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
#include <MelkarCommon/platform/record/record.h>
#include <MelkarCommon/platform/running_step.h>
#include <MelkarCommon/platform/surfaces/device.h>
#include <MelkarCommon/platform/surfaces/draft.h>
#include <MelkarCommon/platform/surfaces/objects.h>

#include <memory>
#include <utility>
#include <variant>
#include <vector>

/// @file
/// Internal. What bitmaps are made of. The kinds are a variant, visited by a function for each: where a new one is
/// missing, nothing compiles.

namespace melkar {

/// No room to draw on: what a compatible surface has until a bitmap is selected into it.
struct NoPicture {};

/// A rectangle of some pixels.
struct PixelPart {
    PixelBuffer pixels;
    RECT part;
};

/// Pixels, the picture's own or those of the host. Its backend lives as long: what waits to be written belongs to both.
/// It may begin as a draft, which becomes pixels when somebody looks.
class PixelPicture {
public:
    /// A draft, a pixel a unit.
    PixelPicture(DeviceSize size, Color ground);
    /// On the host's memory, at which anybody may look after any call.
    explicit PixelPicture(const PixelBuffer& memory);
    /// Of one colour, which waits to be written.
    PixelPicture(OwnPixels pixels, Color color);
    /// As it was loaded. @param file its pixels, if it was loaded at another size
    PixelPicture(OwnPixels pixels, OwnPixels file);
    PixelPicture(const PixelPicture&) = delete;
    PixelPicture& operator=(const PixelPicture&) = delete;

    /// In units.
    DeviceSize Size() const;
    double Scale() const { return m_buffer.scale; }
    /// For a call that draws.
    Backend& Drawing();
    const PictureState& State() const { return m_state; }
    /// The pixels with everything on them that was drawn.
    const PixelBuffer& Shown();
    /// What of it a copy by `operation` takes to where a unit has `scale` pixels. A mask that was loaded at another
    /// size keeps its edge: "and" and "or" take the nearest pixels of the file. So do all copies to finer pixels, as
    /// long as the file has more of them. @param part in units, within the picture
    PixelPart ShownFor(DWORD operation, const RECT& part, double scale);
    /// Hands the memory out: from now on everything stands there after each call.
    const PixelBuffer& Expose();
    bool IsExposed() const { return m_isExposed; }
    /// What is to be played instead of looked at; null if there are pixels, or if it was played often.
    Draft* FreshDraft() { return m_draft != nullptr && m_draft->IsFresh() ? m_draft.get() : nullptr; }
    /// How many operations can be taken back.
    std::size_t Drawn() const { return m_draft != nullptr ? m_draft->Count() : 0; }
    /// Drawing failed in the middle: operations behind the first `count` go, pixels stand. The backend, which may have
    /// a clip still, is made anew.
    void Recover(std::size_t count);
    /// What `GetObjectA` tells; the memory only where it is handed out, and where a unit is a pixel.
    BITMAP Description() const;

private:
    class DraftBackend;

    static std::uint64_t NextId();
    Backend& DrawingPixels();
    void BecomePixels();
    bool HasMoreInFile() const;
    const PixelBuffer& ShownFor(DWORD operation);

    OwnPixels m_own; ///< none on the host's memory, nor yet for a draft
    PixelBuffer m_buffer;
    std::unique_ptr<Draft> m_draft;          ///< until there are pixels
    std::unique_ptr<Backend> m_draftBackend; ///< draws on whichever there is
    OwnPixels m_file;                        ///< once asked for at this size; gone when something is drawn
    PendingFill m_pending;
    PictureState m_state{NextId(), 0};
    bool m_isExposed = true;
    std::unique_ptr<Backend> m_backend; ///< made when something is drawn
};

/// Whether the operations of a record know the steps of the cycle that drew them.
enum class StepNames : std::uint8_t { Drop, Keep };

/// The operations drawn on it, to be played where it is copied: a page or a record stays vector.
class RecordPicture {
public:
    /// @param ground what it is where nothing is drawn, if it has to become pixels
    RecordPicture(DeviceSize size, Color ground, StepNames steps) : m_size(size), m_ground(ground), m_steps(steps) {}
    RecordPicture(const RecordPicture&) = delete;
    RecordPicture& operator=(const RecordPicture&) = delete;

    DeviceSize Size() const { return m_size; }
    Color Ground() const { return m_ground; }
    /// For a call that draws, in the step that it is in.
    Backend& Drawing();
    const std::vector<RecordedOp>& Ops() const { return m_ops; }
    bool KeepsSteps() const { return m_steps == StepNames::Keep; }
    /// Which drew the operation; null outside of all steps.
    const StepName* StepOf(std::size_t op) const { return op < m_stepOf.size() ? m_stepOf[op] : m_drawing; }
    void Mark(const CopyMark& mark) { m_ops.emplace_back(mark); }
    /// Drawing failed in the middle: the operations behind the first `count` go, the backend is made anew.
    void Recover(std::size_t count);

private:
    DeviceSize m_size;
    Color m_ground;
    StepNames m_steps;
    std::vector<RecordedOp> m_ops;
    std::vector<const StepName*> m_stepOf; ///< the operations, but for those of the last call
    const StepName* m_drawing = nullptr;   ///< in the last call
    std::unique_ptr<Backend> m_backend;    ///< made when something is drawn
};

using Picture = std::variant<NoPicture, PixelPicture, RecordPicture>;

struct Bitmap : GdiObject, InHandleMemory<ObjectKind::Bitmap> {
    template <class Kind, class... Arguments>
    Bitmap(Owner who, std::in_place_type_t<Kind> kind, Arguments&&... arguments)
        : GdiObject(ObjectKind::Bitmap, who), picture(kind, std::forward<Arguments>(arguments)...) {}

    Picture picture;
};

inline Bitmap* BitmapFrom(HGDIOBJ h) { return ObjectFrom<Bitmap>(h, ObjectKind::Bitmap); }
Bitmap& StockBitmap(); ///< without room

/// For a picture of that many units; none if they are too many, or without memory.
OwnPixels PixelsFor(DeviceSize size, double scale);

/// Pixels or a record, as suits the device; black. Null if the pixels are too many, or without memory where they come
/// at once.
std::unique_ptr<Bitmap> MakeSuitingBitmap(const Device& device, DeviceSize size);
/// Of one colour, with `scale` pixels a unit. Null without memory for them, or if they are too many.
std::unique_ptr<Bitmap> MakePixelBitmap(DeviceSize size, double scale, COLORREF color, Owner owner);
std::unique_ptr<Bitmap> MakeRecordBitmap(DeviceSize size, COLORREF ground, Owner owner,
                                         StepNames steps = StepNames::Drop);

DeviceSize SizeOf(const Picture& picture);
/// Null without room.
Backend* DrawingOn(Picture& picture);
/// Whether anybody may look at its memory after any call, so that nothing may wait.
bool IsExposed(const Picture& picture);
/// For whoever wants to see pixels; null if there are none.
PixelPicture* PixelsOf(Picture& picture);
/// How much is drawn that `TakeBack` can take back again.
std::size_t DrawnOn(const Picture& picture);
/// Takes back what was drawn since; once there are pixels, it stands.
void TakeBack(Picture& picture, std::size_t drawn);
/// Null for other kinds.
RecordPicture* RecordOf(Picture& picture);

} // namespace melkar
