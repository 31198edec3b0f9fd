// Drawing calls in any order, with any numbers, on every kind of surface and on what suits them: what is drawn there is
// kept as a record or as pixels, and played where it is copied.

#include "../input.h"
#include "../surfaces.h"

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/support/marks.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_box.h>

#include <optional>

namespace melkar::fuzz {
namespace {

/// Surfaces and objects, which calls leave selected anywhere.
class Desk {
public:
    explicit Desk(std::string_view bytes) : m_bytes(bytes), m_surfaces(std::in_place, m_visit) {
        m_tops.push_back(m_surfaces->Of('m'));
    }
    /// What is selected isn't deleted, so surfaces go first.
    ~Desk() {
        for (HDC made : m_compatible)
            DeleteDC(made);
        m_surfaces.reset();
        for (HGDIOBJ object : m_objects)
            DeleteObject(object);
    }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    bool IsDone() const { return m_bytes.IsEmpty(); }
    Bytes& From() { return m_bytes; }
    HDC Top() const { return m_tops.back(); }
    HDC Any() { return m_tops[m_bytes.Next() % m_tops.size()]; }
    HGDIOBJ AnyObject() { return m_objects.empty() ? nullptr : m_objects[m_bytes.Next() % m_objects.size()]; }

    void Choose() {
        constexpr std::size_t count = sizeof Surfaces::kKinds - 1;
        m_tops.push_back(m_surfaces->Of(Surfaces::kKinds[m_bytes.Next() % count]));
    }
    void ChooseFormer() { m_tops.push_back(Any()); }
    void ChooseCompatible() {
        if (m_compatible.size() < kMost)
            m_tops.push_back(m_compatible.emplace_back(CreateCompatibleDC(Top())));
    }
    void Keep(HGDIOBJ object) {
        if (m_objects.size() < kMost)
            m_objects.push_back(object);
        else
            DeleteObject(object);
    }
    /// Selected, as a rule.
    void Use(HGDIOBJ object) {
        Keep(object);
        SelectObject(Top(), object);
    }

private:
    static constexpr std::size_t kMost = 40;

    Bytes m_bytes;
    Visit m_visit;
    std::optional<Surfaces> m_surfaces;
    std::vector<HDC> m_tops; ///< those that were drawn on, the last on top
    std::vector<HDC> m_compatible;
    std::vector<HGDIOBJ> m_objects;
};

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

void FillRegion(Desk& d) {
    constexpr std::size_t kMostCorners = 12;
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
    const int width = d.From().Number() * 4;
    const int height = d.From().Number();
    if (width < 1 || height < 1 || height < kMostPixels / width)
        d.Use(CreateCompatibleBitmap(d.Top(), width, height));
}

void SelectFont(Desk& d) {
    constexpr const char* kFaces[] = {"DejaVu Sans", "MS Gothic", "", "Tahoma"};
    Bytes& from = d.From();
    const int height = from.Number();
    const int escapement = from.Number() * 100;
    const BYTE flags = from.Next();
    d.Use(CreateFontA(height, 0, escapement, 0, (flags & 1) != 0 ? FW_BOLD : 0, flags & 2U, flags & 4U, flags & 8U,
                      kCharsets[from.Next() % std::size(kCharsets)], 0, 0, 0, 0,
                      kFaces[flags / 16 % std::size(kFaces)]));
}

void DrawText(Desk& d) {
    RECT box = d.From().Box();
    const UINT format = kFormats[d.From().Next() % std::size(kFormats)];
    std::string text = d.From().Text();
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
    const CString text = d.From().Text().c_str();
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

using Call = void (*)(Desk&);

constexpr Call kCalls[] = {
    [](Desk& d) { d.Choose(); },
    [](Desk& d) { d.ChooseFormer(); },
    [](Desk& d) { d.ChooseCompatible(); },
    [](Desk& d) {
        const POINT to{d.From().Number(), d.From().Number()};
        MoveToEx(d.Top(), to.x, to.y, nullptr);
    },
    [](Desk& d) {
        const POINT to{d.From().Number(), d.From().Number()};
        LineTo(d.Top(), to.x, to.y);
    },
    [](Desk& d) {
        const RECT box = d.From().Box();
        Rectangle(d.Top(), box.left, box.top, box.right, box.bottom);
    },
    [](Desk& d) {
        const RECT box = d.From().Box();
        Ellipse(d.Top(), box.left, box.top, box.right, box.bottom);
    },
    [](Desk& d) {
        const RECT box = d.From().Box();
        const RECT by = d.From().Box();
        Pie(d.Top(), box.left, box.top, box.right, box.bottom, by.left, by.top, by.right, by.bottom);
    },
    FillRegion,
    Copy,
    [](Desk& d) {
        const POINT at{d.From().Number(), d.From().Number()};
        TextOutA(d.Top(), at.x, at.y, d.From().Text().c_str(), d.From().Number());
    },
    DrawText,
    DrawTextBox,
    DrawMarks,
    SelectBitmap,
    SelectFont,
    [](Desk& d) {
        const int style = d.From().Next() % (PS_INSIDEFRAME + 1);
        const int width = d.From().Number();
        d.Use(CreatePen(style, width, Color(d.From())));
    },
    [](Desk& d) { d.Use(CreateSolidBrush(Color(d.From()))); },
    [](Desk& d) { SelectObject(d.Top(), GetStockObject(d.From().Next() % (SYSTEM_FONT + 1))); },
    [](Desk& d) { SelectObject(d.Any(), d.AnyObject()); },
    [](Desk& d) { DeleteObject(d.AnyObject()); }, // once more at the end: refused
    [](Desk& d) { SetBkMode(d.Top(), d.From().Next() % 4); },
    [](Desk& d) { SetBkColor(d.Top(), Color(d.From())); },
    [](Desk& d) { SetTextColor(d.Top(), Color(d.From())); },
    [](Desk& d) { StartPage(d.Top()); },
    [](Desk& d) { EndPage(d.Top()); },
    Look,
    [](Desk&) { TrimMemory(); },
};

void DrawCalls(std::string_view input) {
    constexpr int kMostCalls = 200;
    Desk desk(input);
    for (int i = 0; i < kMostCalls && !desk.IsDone(); ++i)
        kCalls[desk.From().Next() % std::size(kCalls)](desk);
}

/// Each call on each surface and on what suits that, with growing numbers.
void SeedDrawing(Seeds& seeds) {
    constexpr int kParameters = 14;
    constexpr char kChoose = 0, kChooseCompatible = 2, kCopy = 9, kBitmap = 14;
    std::string calls;
    for (std::size_t call = 1; call < std::size(kCalls); ++call) {
        calls += static_cast<char>(call);
        for (int i = 0; i < kParameters; ++i)
            calls += static_cast<char>(20 + i * 9 + static_cast<int>(call));
    }
    for (char surface = 0; surface < static_cast<char>(sizeof Surfaces::kKinds - 1); ++surface) {
        const std::string chosen{kChoose, surface};
        seeds.add("calls-on-" + std::to_string(surface), chosen + calls);
        const std::string compatible{kChooseCompatible, kBitmap, 80, 120};
        const std::string copied{kCopy, 20, 20, 120, 120, 20, 20, 120, 120, 0, 1, 0};
        seeds.add("calls-copied-to-" + std::to_string(surface), chosen + compatible + calls + chosen + copied);
    }
    seeds.words = {"a b\nc", "\xE3\x81\x82", "\xD7\xA9", "\x82\xA0"};
}

} // namespace

extern const Target kDrawing;
const Target kDrawing{"drawing", "bytes: numbers of drawing calls and their arguments", DrawCalls, SeedDrawing};

} // namespace melkar::fuzz
