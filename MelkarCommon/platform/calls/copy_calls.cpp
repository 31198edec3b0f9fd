#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/pixel_grid.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

using namespace melkar;

namespace {

constexpr std::size_t kMostOps = 1 << 20; ///< of a record; one of a graph has some hundreds

/// The part of a copy that lies within the source picture; the target shrinks in proportion.
struct Copy {
    RECT target;
    RECT source;
    bool isScaled;
};

/// One axis of a copy: the span `from`..`to` of the source, cut to 0..limit, and the target span with it. A span beside
/// the picture becomes empty as it is: at the edge of an int it has no width to scale by.
void CutSpan(int& from, int& to, int& targetFrom, int& targetTo, int limit) {
    const int cutFrom = std::max(from, 0);
    const int cutTo = std::min(to, limit);
    if (cutFrom >= cutTo) {
        to = from;
        return;
    }
    const double scale = (double{1} * targetTo - targetFrom) / (double{1} * to - from);
    targetTo = NearestInt(targetFrom + std::llround((double{1} * cutTo - from) * scale));
    targetFrom = NearestInt(targetFrom + std::llround((double{1} * cutFrom - from) * scale));
    from = cutFrom;
    to = cutTo;
}

void CutToPicture(Copy& copy, DeviceSize picture) {
    CutSpan(copy.source.left, copy.source.right, copy.target.left, copy.target.right, picture.width);
    CutSpan(copy.source.top, copy.source.bottom, copy.target.top, copy.target.bottom, picture.height);
}

/// Plays what is drawn instead of copying pixels that there aren't yet: a whole picture as it is, onto pixels at which
/// nobody looks meanwhile. @return false if these are asked for
bool CopyDraft(HDC to, Backend& backend, PixelPicture& from, const Copy& copy, DWORD operation) {
    Draft* draft = from.FreshDraft();
    Picture* picture = PictureOf(to->target);
    const PixelPicture* pixels = picture != nullptr ? PixelsOf(*picture) : nullptr;
    const bool isPlain = draft != nullptr && operation == SRCCOPY && !copy.isScaled &&
                         Covers(copy.source, draft->Whole()) && pixels != nullptr && pixels != &from;
    if (!isPlain || pixels->IsExposed() || pixels->Scale() != from.Scale())
        return false;
    draft->PlayOn(pixels->State(), backend, {copy.target.left, copy.target.top}, to->Bounds());
    return true;
}

BOOL CopyPixels(HDC to, Backend& backend, double scale, PixelPicture& from, Copy copy, DWORD operation) {
    CutToPicture(copy, from.Size());
    if (IsEmptyRect(copy.source) || IsEmptyRect(copy.target))
        return FALSE;
    if (CopyDraft(to, backend, from, copy, operation))
        return TRUE;
    const PixelPart shown = from.ShownFor(operation, copy.source, scale);
    backend.Blit(copy.target, shown.pixels, shown.part, operation);
    return TRUE;
}

/// Calls play(operation, backend) for each in the step that drew it.
template <class Play>
void PlayInSteps(const RecordPicture& from, RecordPicture& to, std::span<const RecordedOp> ops, const Play& play) {
    StepScope scope;
    for (std::size_t i = 0; i < ops.size(); ++i) {
        scope.Enter(from.StepOf(i));
        play(ops.subspan(i, 1), to.Drawing());
    }
}

/// Plays what was recorded again on `to`, at the copy's place. Onto itself or to and fro between two, a record would
/// double with each copy: in place it is left as it is, elsewhere the copy ends at `kMostOps`.
BOOL CopyRecord(HDC to, Backend& backend, const RecordPicture& from, Copy copy) {
    CutToPicture(copy, from.Size());
    if (IsEmptyRect(copy.source))
        return FALSE;
    Picture* picture = PictureOf(to->target);
    RecordPicture* record = picture ? RecordOf(*picture) : nullptr;
    if (record == &from && copy.target.left == copy.source.left && copy.target.top == copy.source.top)
        return TRUE;
    if (record && from.Ops().size() + record->Ops().size() > kMostOps)
        return FALSE;
    const std::vector<RecordedOp> ops = from.Ops(); // a copy: `to` may be the same surface
    if (record)
        record->Mark({copy.target, copy.source});
    const auto play = [&](std::span<const RecordedOp> some, Backend& on) {
        Replay(some, on, copy.source, {copy.target.left, copy.target.top}, to->Bounds());
    };
    if (record && record->KeepsSteps() && from.KeepsSteps())
        PlayInSteps(from, *record, ops, play);
    else
        play(ops, backend);
    return TRUE;
}

/// Plays what was recorded at pixels and copies these: what is scaled, or combined with what is there, can't stay a
/// list of operations.
BOOL CopyPlayedRecord(Backend& to, double scale, const RecordPicture& from, Copy copy, DWORD operation) {
    CutToPicture(copy, from.Size());
    if (IsEmptyRect(copy.source) || IsEmptyRect(copy.target))
        return FALSE;
    const RECT whole{0, 0, copy.source.right - copy.source.left, copy.source.bottom - copy.source.top};
    OwnPixels memory = PixelsFor({whole.right, whole.bottom}, scale);
    if (!memory.AreThere())
        return FALSE;
    PixelPicture played(std::move(memory), from.Ground());
    Replay(from.Ops(), played.Drawing(), copy.source, {0, 0}, whole);
    to.Blit(copy.target, played.Shown(), PixelGrid(scale).Edges(whole), operation);
    return TRUE;
}

RECT RectAt(int x, int y, int width, int height) { return {x, y, AddEdge(x, width), AddEdge(y, height)}; }

BOOL CopyPicture(HDC to, Backend& backend, Picture& from, const Copy& copy, DWORD operation) {
    const double scale = ScaleOf(to->target);
    const bool staysVector = !copy.isScaled && operation == SRCCOPY;
    return std::visit(Overloaded{
                          [](NoPicture&) { return FALSE; },
                          [&](PixelPicture& pixels) { return CopyPixels(to, backend, scale, pixels, copy, operation); },
                          [&](RecordPicture& record) {
                              return staysVector ? CopyRecord(to, backend, record, copy)
                                                 : CopyPlayedRecord(backend, scale, record, copy, operation);
                          },
                      },
                      from);
}

} // namespace

BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation) {
    return StretchBlt(to, x, y, width, height, from, fromX, fromY, width, height, operation);
}

BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation) {
    if (!IsSurface(to) || !IsSurface(from) || width < 1 || height < 1 || fromWidth < 1 || fromHeight < 1 ||
        !IsKnownOperation(operation))
        return FALSE;
    const Copy copy{RectAt(x, y, width, height), RectAt(fromX, fromY, fromWidth, fromHeight),
                    width != fromWidth || height != fromHeight};
    return DrawOrFail(to, [&](Backend* backend) {
        Picture* picture = from->Shown();
        return backend && picture ? CopyPicture(to, *backend, *picture, copy, operation) : FALSE;
    });
}
