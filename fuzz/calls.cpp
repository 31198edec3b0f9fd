#include "calls.h"

#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/support/marks.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_box.h>

#include <algorithm>

namespace melkar::fuzz {
namespace {

constexpr DWORD kOperations[] = {SRCCOPY, SRCPAINT, SRCAND, 0};
constexpr UINT kFormats[] = {0,
                             DT_WORDBREAK,
                             DT_SINGLELINE,
                             DT_CALCRECT,
                             DT_CALCRECT | DT_WORDBREAK,
                             DT_CENTER | DT_VCENTER | DT_SINGLELINE,
                             DT_RIGHT | DT_BOTTOM | DT_SINGLELINE,
                             DT_CENTER | DT_WORDBREAK};
constexpr BYTE kCharsets[] = {0, 1, 128, 129, 134, 136, 161, 162, 177, 178, 186, 204, 238, 255};

COLORREF Color(Bytes& from) {
    const unsigned red = from.Next(), green = from.Next();
    return RGB(red, green, from.Next());
}

/// A number of any size goes round.
int Times(int number, unsigned by) { return static_cast<int>(static_cast<unsigned>(number) * by); }

void FillRegion(Desk& d) {
    constexpr std::size_t kMostCorners = 8;
    std::vector<POINT> corners(d.From().Next() % kMostCorners);
    for (POINT& corner : corners)
        corner = {d.From().Number(), d.From().Number()};
    HRGN region = CreatePolygonRgn(corners.data(), static_cast<int>(corners.size()), 1 + d.From().Next() % 2);
    FillRgn(d.Top(), region, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    d.Keep(region);
}

/// Bitmaps of a page's size take long: one of 2^27 pixels is for the tests.
void SelectBitmap(Desk& d) {
    constexpr int kMostPixels = 1 << 20;
    const int width = Times(d.From().Number(), 4);
    const int height = d.From().Number();
    if (width < 1 || height < 1 || height < kMostPixels / width)
        d.Use(CreateCompatibleBitmap(d.Top(), width, height));
}

void SelectFont(Desk& d) {
    constexpr const char* kFaces[] = {"DejaVu Sans", "MS Gothic", "", "Tahoma"};
    Bytes& from = d.From();
    const int height = from.Number();
    const int escapement = Times(from.Number(), 100);
    const BYTE flags = from.Next();
    d.Use(CreateFontA(height, 0, escapement, 0, (flags & 1) != 0 ? FW_BOLD : 0, flags & 2U, flags & 4U, flags & 8U,
                      kCharsets[from.Next() % std::size(kCharsets)], 0, 0, 0, 0,
                      kFaces[flags / 16 % std::size(kFaces)]));
}

void DrawText(Desk& d) {
    RECT box = d.From().Box();
    const UINT format = kFormats[d.From().Next() % std::size(kFormats)];
    std::string text = d.From().Rest();
    const RECT before = box;
    DrawTextExA(d.Top(), text.data(), -1, &box, format, nullptr);
    Require(box.left == before.left && box.top == before.top, "measuring never moves the left or top edge");
}

void Copy(Desk& d) {
    const RECT to = d.From().Box();
    const RECT of = d.From().Box();
    const DWORD operation = kOperations[d.From().Next() % std::size(kOperations)];
    HDC source = d.Any();
    if (d.From().Next() % 2 == 0)
        BitBlt(d.Top(), to.left, to.top, to.right, to.bottom, source, of.left, of.top, operation);
    else
        StretchBlt(d.Top(), to.left, to.top, to.right, to.bottom, source, of.left, of.top, of.right, of.bottom,
                   operation);
}

void DrawMarks(Desk& d) {
    const RECT box = d.From().Box();
    DrawTriangle(d.Top(), box, 0xFF, 0xFF00, d.From().Number());
    DrawDiamond(d.Top(), box, 0xFF, 0xFF00, d.From().Number());
    DrawRectangle(d.Top(), box, 0xFF, 0xFF00, d.From().Number());
    DrawTransParentRectangle(d.Top(), box, 0xFF, 0xFF00, d.From().Number());
    DrawArrow(d.Top(), {box.left, box.top}, {box.right, box.bottom}, d.From().Number() / 9.0, d.From().Number(), 1, 1);
}

void DrawTextBox(Desk& d) {
    const CRect box(d.From().Box());
    const int size = d.From().Number();
    const CString text = d.From().Rest().c_str();
    DrawTextVCenter(d.Top(), box, text, DT_CENTER);
    DrawTextVCenterEx(d.Top(), box, text, DT_RIGHT, size, nullptr);
    DrawTextBottom(d.Top(), box, text, 0, size, "DejaVu Sans");
    DrawTextTop(d.Top(), box, text, DT_CENTER, size, "MS Gothic");
}

void Look(Desk& d) {
    GetPixels(d.Top());
    GetRecording(d.Top());
    BITMAP bitmap{};
    LOGFONTA font{};
    HGDIOBJ object = d.AnyObject();
    GetObjectA(object, sizeof bitmap, &bitmap);
    GetObjectA(object, sizeof font, &font);
    GetDeviceCaps(d.Top(), d.From().Number());
}

void DrawSlice(Desk& d) {
    const RECT box = d.From().Box();
    const RECT by = d.From().Box();
    Pie(d.Top(), box.left, box.top, box.right, box.bottom, by.left, by.top, by.right, by.bottom);
}

void SelectPen(Desk& d) {
    const int style = d.From().Next() % (PS_INSIDEFRAME + 1);
    const int width = d.From().Number();
    d.Use(CreatePen(style, width, Color(d.From())));
}

void DrawLine(Desk& d) {
    const RECT line = d.From().Box();
    MoveToEx(d.Top(), line.left, line.top, nullptr);
    LineTo(d.Top(), line.right, line.bottom);
}

void TurnText(Desk& d) {
    const POINT at{d.From().Number(), d.From().Number()};
    const int length = d.From().Number();
    TextOutA(d.Top(), at.x, at.y, d.From().Rest().c_str(), length);
}

template <auto Shape> void DrawShape(Desk& d) {
    const RECT box = d.From().Box();
    Shape(d.Top(), box.left, box.top, box.right, box.bottom);
}

void ChooseKind(Desk& d) {
    constexpr std::size_t count = sizeof Surfaces::kKinds - 1;
    d.Choose(Surfaces::kKinds[d.From().Next() % count]);
}

constexpr Call kCalls[] = {
    DrawLine,
    [](Desk& d) {
        const POINT to{d.From().Number(), d.From().Number()};
        LineTo(d.Top(), to.x, to.y);
    },
    DrawShape<Rectangle>,
    DrawShape<Ellipse>,
    DrawSlice,
    FillRegion,
    TurnText,
    DrawText,
    DrawTextBox,
    DrawMarks,
    SelectFont,
    SelectPen,
    [](Desk& d) { d.Use(CreateSolidBrush(Color(d.From()))); },
    [](Desk& d) { SelectObject(d.Top(), GetStockObject(d.From().Next() % (SYSTEM_FONT + 1))); },
    [](Desk& d) { SetBkMode(d.Top(), d.From().Next() % 4); },
    [](Desk& d) { SetBkColor(d.Top(), Color(d.From())); },
    [](Desk& d) { SetTextColor(d.Top(), Color(d.From())); },
    // The others.
    ChooseKind,
    [](Desk& d) { d.ChooseFormer(); },
    [](Desk& d) { d.ChooseCompatible(); },
    SelectBitmap,
    Copy,
    [](Desk& d) { SelectObject(d.Any(), d.AnyObject()); },
    [](Desk& d) { DeleteObject(d.AnyObject()); }, // once more at the end: refused
    [](Desk& d) { StartPage(d.Top()); },
    [](Desk& d) { EndPage(d.Top()); },
    Look,
    [](Desk&) { TrimMemory(); },
};
constexpr std::size_t kDrawing = 17;

} // namespace

std::span<const Call> DrawingCalls() { return std::span(kCalls).first(kDrawing); }
std::span<const Call> AllCalls() { return kCalls; }

void Run(Desk& desk, std::span<const Call> calls, std::string_view blocks, int limit) {
    constexpr std::size_t kMostCalls = 200;
    for (std::size_t at = 0; at < std::min(blocks.size(), kMostCalls * kBlock); at += kBlock) {
        desk.Take(Bytes(blocks.substr(at, kBlock), limit));
        calls[desk.From().Next() % calls.size()](desk);
    }
}

std::string Block(std::size_t call, const std::string& arguments) {
    std::string block = static_cast<char>(call) + arguments;
    block.resize(kBlock);
    return block;
}

std::string EachOf(std::span<const Call> calls) {
    std::string blocks;
    for (std::size_t call = 0; call < calls.size(); ++call) {
        std::string arguments;
        for (std::size_t i = 0; i < kBlock - 1; ++i)
            arguments += static_cast<char>(22 + i * 9 + call);
        blocks += Block(call, arguments);
    }
    return blocks;
}

} // namespace melkar::fuzz
