#include "shown_place.h"

#include <algorithm>
#include <utility>

namespace melkar::tool {
namespace {

/// The smallest area around a point that something has, and what that is.
class Smallest {
public:
    explicit Smallest(CPoint at) : m_at(at) {}

    void Try(const CRect& area, const std::string& words) {
        const std::int64_t room = std::int64_t{1} * area.Width() * area.Height();
        if (!words.empty() && area.PtInRect(m_at) && (m_words.empty() || room < m_room)) {
            m_words = words;
            m_room = room;
        }
    }
    const std::string& Words() const { return m_words; }

private:
    CPoint m_at;
    std::string m_words;
    std::int64_t m_room = 0;
};

std::string Joined(const std::string& one, const std::string& between, const std::string& other) {
    return one.empty() || other.empty() ? one + other : one + between + other;
}

std::string WordsOf(const Contents& picture, const ShownItem& item, const std::string& figure) {
    return Joined(item.caption, ": ", figure.empty() ? "" : Joined(figure, " ", picture.unit));
}

void TryItem(Smallest& smallest, const Contents& picture, const ShownItem& item) {
    for (const ShownFigure& figure : item.figures) {
        const std::string& series = picture.series.at(static_cast<std::size_t>(figure.series)).name;
        const bool isSaid = series == picture.unit || series == item.caption;
        smallest.Try(figure.area, Joined(WordsOf(picture, item, figure.text), ", ", isSaid ? "" : series));
    }
    smallest.Try(item.area, WordsOf(picture, item, item.text));
}

} // namespace

std::string ShownAt(const std::vector<Contents>& pictures, CPoint at) {
    Smallest smallest(at);
    for (const Contents& picture : pictures) {
        for (const ShownItem& item : picture.items)
            TryItem(smallest, picture, item);
        for (const ShownMark& mark : picture.marks)
            smallest.Try(mark.area, Joined(mark.label, ": ", mark.text));
    }
    return smallest.Words();
}

} // namespace melkar::tool
