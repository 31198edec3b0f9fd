#pragma once

#include <MelkarCommon/widgets/picture.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// @file
/// What widgets of all toolkits share: surfaces of the right size, the picture on them, where pointer and keyboard are,
/// and what leaves the widget as files or pages. No toolkit here.

namespace melkar::widgets {

/// Keys that walk from item to item.
enum class Stride : std::uint8_t {
    Next,
    Previous,
    First,
    Last,
    WeekOn,
    WeekBack,
};

/// What a picture says, for programs that read aloud.
struct Told {
    PageWords words;                ///< title, description and language
    ContentsTable table;            ///< a row for each item
    std::vector<std::string> names; ///< of the items: "Mar 4: 9268 steps"
};

/// Pixels as they are to be shown, in the memory of the picture itself; whoever shows them keeps the owner as long.
struct ShownPixels {
    std::shared_ptr<const void> owner;
    PixelView view{}; ///< all zero without a picture
};

/// The picture of a widget. Points and areas are units of the widget. Items are those of all parts, one after the
/// other.
class ChartView {
public:
    ChartView(PictureMaker make, ChartLooks looks, std::string data);
    ~ChartView();

    // What is to be shown, from the next `Update` on.
    void SetLooks(ChartLooks looks);
    void SetDarkLooks(ChartLooks looks); ///< those for a dark desktop
    void SetDark(bool isDark);
    void SetData(std::string path); ///< empty: the graph holds what it draws
    void Remake();                  ///< profile or data have changed
    void Redraw();                  ///< data or the graph's switches have
    /// Units, and pixels a unit, of which surfaces take 1 to 8. @return whether another picture is due
    bool SetSize(int width, int height, double scale);

    /// Draws what is out of date. A failure leaves the last good picture. @return whether anything was tried
    bool Update();
    long Result() const { return m_result; } ///< of what was tried last
    bool HasPicture() const { return m_surfaces != nullptr; }
    ChartPicture* Picture() const { return m_picture.get(); } ///< null before the first good one
    ShownPixels Pixels() const;
    const std::vector<Contents>& Shown() const { return m_shown; }
    const Told& Tell() const;
    const std::vector<CRect>& Places() const { return m_places; } ///< of the items; empty where nobody can tell

    // Pointer.
    bool HoverAt(CPoint point);     ///< @return whether the pixels changed
    bool EndHover();                ///< likewise
    long DayAt(CPoint point) const; ///< what a click there means: a day, or the index of an item; -1: nothing
    std::string
    TipAt(CPoint point) const; ///< for a toolkit's tooltip; empty where a balloon tells, or nothing is there

    // Keyboard. `Walk` and `StopWalking` move the balloon along.
    bool Walk(Stride stride); ///< @return whether there was anywhere to go
    void WalkTo(std::size_t item);
    bool StopWalking();                                              ///< @return whether somebody walked
    std::optional<std::size_t> Current() const { return m_current; } ///< index of an item
    CRect Ring() const;                                              ///< around it; empty where none is to be shown

    // What leaves the widget, without balloon and ring.
    std::string Save(const std::string& path); ///< as its suffix says. @return empty, or the reason of a failure
    bool DrawOnPage(HDC page);                 ///< of the size of the widget
    ShownPixels DrawScaled(double scale);      ///< in that many pixels a unit, for pages that take no lines and texts

private:
    struct Surfaces;

    const ChartLooks& Looks() const { return m_isDark && m_darkLooks ? *m_darkLooks : m_looks; }
    CRect Area() const { return {0, 0, m_width, m_height}; }
    long Renew();
    long Read(ChartPicture& picture);
    long Draw(ChartPicture& picture);
    void TakeOver(std::shared_ptr<Surfaces> surfaces, const ChartPicture& picture);
    std::optional<std::size_t> ItemAt(CPoint point) const;
    std::string SavePage(const std::string& path, PageFormat format);
    bool DrawElsewhere(const LentSurfaces& surfaces);

    KeepLocale m_keepLocale; ///< toolkits have set it for their own texts
    PictureMaker m_make;
    ChartLooks m_looks;
    std::optional<ChartLooks> m_darkLooks;
    std::string m_data;
    int m_width = 0;
    int m_height = 0;
    double m_scale = 1;
    bool m_isDark = false;
    bool m_isMade = false;  ///< with the looks that count now
    bool m_isRead = false;  ///< the data file was tried
    bool m_isDrawn = false; ///< in the size that counts now
    long m_result = kOk;
    long m_renewal = kOk;                 ///< of the last try with other looks or data
    std::shared_ptr<Surfaces> m_surfaces; ///< of the last good picture, which draws on them and is freed before
    std::unique_ptr<ChartPicture> m_picture;
    std::vector<Contents> m_shown;
    std::vector<const ShownItem*> m_items; ///< of all parts of `m_shown`
    std::vector<CRect> m_places;
    mutable std::optional<Told> m_told; ///< once asked for
    std::optional<std::size_t> m_current;
    bool m_hasBalloon = false; ///< one is painted on the picture
};

} // namespace melkar::widgets
