#include "chart_view.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

namespace melkar::widgets {
namespace {

constexpr double kLeastScale = 1; // what surfaces take
constexpr double kMostScale = 8;
constexpr int kWeek = 7;
constexpr int kPageDpi = 96; // of units
constexpr int kReach = 4;    // around dots and other small areas, so that a pointer finds them

/// What every picture of a file has, days or not.
bool IsReadable(long result) { return result == kOk || result == kNoDays; }

bool HasArea(const CRect& area) { return area.right > area.left && area.bottom > area.top; }

bool IsAt(CRect area, CPoint point) {
    if (!HasArea(area))
        return false;
    if (area.Width() < 2 * kReach || area.Height() < 2 * kReach)
        area.DeflateRect(-kReach, -kReach);
    return area.PtInRect(point);
}

/// That of a figure, which is nearer to what is painted, or of the whole item; empty if the point is in neither.
CRect AreaAt(const ShownItem& item, CPoint point) {
    for (const ShownFigure& figure : item.figures)
        if (IsAt(figure.area, point))
            return figure.area;
    return IsAt(item.area, point) ? item.area : CRect();
}

/// Whether a figure of that colour is there.
bool HasFigureOf(const Contents& part, const ShownItem& item, CPoint point, std::optional<COLORREF> color) {
    return std::any_of(item.figures.begin(), item.figures.end(), [&](const ShownFigure& figure) {
        const auto series = static_cast<std::size_t>(figure.series);
        return IsAt(figure.area, point) && series < part.series.size() && part.series[series].color == color;
    });
}

std::int64_t SizeOf(const CRect& area) { return static_cast<std::int64_t>(area.Width()) * area.Height(); }

std::optional<COLORREF> ColorAt(HDC surface, CPoint point, double scale) {
    const PixelView view = GetPixels(surface);
    const int x = static_cast<int>(point.x * scale);
    const int y = static_cast<int>(point.y * scale);
    if (x < 0 || y < 0 || x >= view.width || y >= view.height)
        return std::nullopt;
    const std::uint32_t pixel = view.pixels[static_cast<std::ptrdiff_t>(y) * view.stride + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

HostPlace PlaceOf(const ChartLooks& looks) {
    if (looks.directory.empty())
        return HostPlace();
    const HostDirectory there(looks.directory.c_str());
    return HostPlace();
}

} // namespace

/// The surfaces that a picture is bound to. The clean one is made when something hovers.
struct ChartView::Surfaces {
    Surfaces(int unitsAcross, int unitsDown, double pixels)
        : width(unitsAcross), height(unitsDown), scale(pixels), shared(CreateScaledSurface(width, height, scale)),
          balloon(CreateScaledSurface(width, height, scale)) {}

    bool Suits(int unitsAcross, int unitsDown, double pixels) const {
        return width == unitsAcross && height == unitsDown && scale == pixels;
    }
    LentSurfaces Lend() const { return {shared, balloon, false}; }
    void Copy(const ScopedSurface& to, const ScopedSurface& from) const {
        BitBlt(to, 0, 0, width, height, from, 0, 0, SRCCOPY);
    }

    int width;
    int height;
    double scale;
    ScopedSurface shared;
    ScopedSurface balloon;
    bool isClean = false; ///< whether `balloon` holds the picture
};

ChartView::ChartView(PictureMaker make, ChartLooks looks, std::string data)
    : m_make(std::move(make)), m_looks(std::move(looks)), m_data(std::move(data)) {}

ChartView::~ChartView() = default;

void ChartView::SetLooks(ChartLooks looks) {
    m_looks = std::move(looks);
    Remake();
}

void ChartView::SetDarkLooks(ChartLooks looks) {
    m_darkLooks = std::move(looks);
    if (m_isDark)
        Remake();
}

void ChartView::SetDark(bool isDark) {
    if (isDark != m_isDark && m_darkLooks)
        Remake();
    m_isDark = isDark;
}

void ChartView::SetData(std::string path) {
    m_data = std::move(path);
    Redraw();
}

void ChartView::Remake() {
    m_isMade = false;
    Redraw();
}

void ChartView::Redraw() { m_isRead = m_isDrawn = false; }

bool ChartView::SetSize(int width, int height, double scale) {
    scale = std::clamp(scale, kLeastScale, kMostScale);
    if (width != m_width || height != m_height || scale != m_scale)
        m_isDrawn = false;
    m_width = width;
    m_height = height;
    m_scale = scale;
    return !m_isDrawn;
}

bool ChartView::Update() {
    if (m_isDrawn || m_width <= 0 || m_height <= 0)
        return false;
    const bool isRenewal = !m_isMade || !m_isRead;
    const long result = Renew();
    if (isRenewal)
        m_renewal = result;
    m_result = result != kOk ? result : m_renewal; // another size hides no failure
    m_isMade = m_isRead = m_isDrawn = true;        // or tried: only a change makes another try worth it
    return true;
}

/// A new object takes the place of the former one when it has drawn.
long ChartView::Renew() {
    std::unique_ptr<ChartPicture> made;
    if (!m_isMade || !m_picture) {
        const HostDirectory here(PlaceOf(Looks()));
        made = m_make(Looks());
        m_isRead = false;
    }
    if (!made && !m_picture)
        return kDrawFailed;
    ChartPicture& picture = made ? *made : *m_picture;
    if (const long result = Read(picture); !IsReadable(result))
        return result;
    const long result = Draw(picture);
    if (result == kOk && made)
        m_picture = std::move(made);
    return result;
}

/// `Draw` alone would go on with what it knows where there is no file.
long ChartView::Read(ChartPicture& picture) { return m_isRead || m_data.empty() ? kOk : picture.Read(m_data.data()); }

long ChartView::Draw(ChartPicture& picture) {
    std::shared_ptr<Surfaces> surfaces = m_surfaces;
    if (!surfaces || !surfaces->Suits(m_width, m_height, m_scale))
        surfaces = std::make_shared<Surfaces>(m_width, m_height, m_scale);
    if (!surfaces->shared || !surfaces->balloon)
        return kDrawFailed;
    picture.Bind(surfaces->Lend());
    const long result = picture.Draw(Area(), m_data.data());
    if (result == kOk)
        TakeOver(std::move(surfaces), picture);
    else if (m_surfaces)
        picture.Bind(m_surfaces->Lend());
    return result;
}

void ChartView::TakeOver(std::shared_ptr<Surfaces> surfaces, const ChartPicture& picture) {
    m_surfaces = std::move(surfaces);
    m_surfaces->isClean = false;
    m_hasBalloon = false;
    m_shown = picture.Shown();
    m_told.reset();
    m_items.clear();
    m_places.clear();
    for (const Contents& part : m_shown) {
        for (const ShownItem& item : part.items)
            m_items.push_back(&item);
        const std::vector<CRect> places = WalkedPlaces(part);
        m_places.insert(m_places.end(), places.begin(), places.end());
    }
    if (m_current && *m_current >= m_items.size())
        m_current.reset();
}

ShownPixels ChartView::Pixels() const {
    if (!m_surfaces)
        return {};
    return {m_surfaces, GetPixels(m_surfaces->shared)};
}

const Told& ChartView::Tell() const {
    if (m_told)
        return *m_told;
    const HostDirectory here(PlaceOf(Looks()));
    const DescriptionWords words;
    m_told.emplace();
    m_told->words = WordsFor(m_shown, words);
    m_told->table = m_shown.size() == 1 ? TableOf(m_shown.front(), words) : TableOf(m_shown, words);
    for (const Contents& part : m_shown)
        for (const ShownItem& item : part.items)
            m_told->names.push_back(NameOf(part, item, words));
    return *m_told;
}

bool ChartView::HoverAt(CPoint point) {
    if (!m_picture || !m_surfaces || !m_picture->HasBalloons())
        return false;
    if (!m_surfaces->isClean) {
        m_surfaces->Copy(m_surfaces->balloon, m_surfaces->shared);
        m_surfaces->isClean = true;
    }
    const bool hadBalloon = std::exchange(m_hasBalloon, m_picture->Hover(point));
    return hadBalloon || m_hasBalloon;
}

bool ChartView::EndHover() {
    if (!m_hasBalloon)
        return false;
    m_surfaces->Copy(m_surfaces->shared, m_surfaces->balloon);
    m_hasBalloon = false;
    return true;
}

/// The smallest that holds the point. Slices share their boxes: there the colour at the point decides.
std::optional<std::size_t> ChartView::ItemAt(CPoint point) const {
    const auto color = ColorAt(m_surfaces->shared, point, m_surfaces->scale);
    std::optional<std::size_t> found;
    CRect smallest;
    std::size_t at = 0;
    for (const Contents& part : m_shown)
        for (const ShownItem& item : part.items) {
            const CRect area = AreaAt(item, point);
            if (HasArea(area) && HasFigureOf(part, item, point, color))
                return at;
            if (HasArea(area) && (!found || SizeOf(area) < SizeOf(smallest))) {
                found = at;
                smallest = area;
            }
            ++at;
        }
    return found;
}

long ChartView::DayAt(CPoint point) const {
    if (!m_picture)
        return -1;
    if (m_picture->HasBalloons())
        return m_picture->DayAt(point);
    const auto item = ItemAt(point);
    return item ? static_cast<long>(*item) : -1;
}

std::string ChartView::TipAt(CPoint point) const {
    if (!m_picture || m_picture->HasBalloons())
        return "";
    const auto item = ItemAt(point);
    return item ? Tell().names[*item] : "";
}

bool ChartView::Walk(Stride stride) {
    if (m_items.empty())
        return false;
    const auto last = static_cast<int>(m_items.size()) - 1;
    const auto here = m_current ? static_cast<int>(*m_current) : -1;
    const std::array<int, 6> to = {here + 1, m_current ? here - 1 : last, 0, last, here + kWeek, here - kWeek};
    WalkTo(static_cast<std::size_t>(std::clamp(to.at(static_cast<std::size_t>(stride)), 0, last)));
    return true;
}

/// The balloon stands beside the middle of the item, as if the pointer were at its right edge, and clear of the ring.
void ChartView::WalkTo(std::size_t item) {
    m_current = item;
    const CRect& area = m_items.at(item)->area;
    EndHover();
    if (HasArea(area))
        HoverAt({area.right - 1, area.top + area.Height() / 2});
}

bool ChartView::StopWalking() {
    const bool walked = m_current.has_value();
    m_current.reset();
    EndHover();
    return walked;
}

CRect ChartView::Ring() const { return m_current ? m_places.at(*m_current) : CRect(); }

/// By the live graph, so that it says there what its host has set; behind it the areas are those of the screen again.
bool ChartView::DrawElsewhere(const LentSurfaces& surfaces) {
    if (!m_picture || !surfaces.shared)
        return false;
    m_picture->Bind(surfaces);
    const bool isDrawn = m_picture->Draw(Area(), m_data.data()) == kOk;
    const HostDirectory here(PlaceOf(Looks())); // of the words
    if (isDrawn && surfaces.isPage)
        SetPageWords(surfaces.shared, WalkedWordsFor(m_picture->Shown()));
    m_picture->Bind(m_surfaces->Lend());
    m_hasBalloon = m_surfaces->isClean = false;
    m_picture->Draw(Area(), m_data.data());
    return isDrawn;
}

bool ChartView::DrawOnPage(HDC page) { return DrawElsewhere({page, nullptr, true}); }

ShownPixels ChartView::DrawScaled(double scale) {
    const auto sheet = std::make_shared<Surfaces>(m_width, m_height, std::clamp(scale, kLeastScale, kMostScale));
    if (!DrawElsewhere(sheet->Lend()))
        return {};
    return {sheet, GetPixels(sheet->shared)};
}

std::string ChartView::SavePage(const std::string& path, PageFormat format) {
    ScopedSurface page(CreatePageSurface(path.c_str(), format, m_width, m_height, kPageDpi));
    if (!page)
        return LastFailure();
    if (!DrawOnPage(page)) {
        AbortDoc(page);
        return ResultText(kDrawFailed);
    }
    return page.Close() ? "" : LastFailure();
}

std::string ChartView::Save(const std::string& path) {
    if (!m_surfaces)
        return ResultText(m_result != kOk ? m_result : kDrawFailed);
    EndHover();
    const std::string suffix = std::filesystem::path(path).extension().string();
    if (suffix == ".pdf")
        return SavePage(path, PageFormat::Pdf);
    if (suffix == ".svg")
        return SavePage(path, PageFormat::Svg);
    return WritePicture(m_surfaces->shared, path.c_str()) == 0 ? "" : LastFailure();
}

} // namespace melkar::widgets
