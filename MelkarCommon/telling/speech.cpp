#include <MelkarCommon/telling/speech.h>

#include <MelkarCommon/telling/describe.h>
#include <MelkarCommon/telling/reading.h>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace melkar {

namespace {

constexpr int kEdge = 2; // around an item, so that one of no height shows where it is

bool HasPlace(const ShownItem& item) { return item.area.right > item.area.left; }

int CenterOf(const ShownItem& item) { return item.area.left + item.area.Width() / 2; }

/// Where items stand in a row: what the places of all can be guessed by.
struct Places {
    int pitch;  ///< from one to the next
    int width;  ///< of one
    int top;    ///< of the highest
    int bottom; ///< of the lowest
};

/// None without two neighbours that have an area.
std::optional<Places> PlacesOf(const std::vector<ShownItem>& items) {
    std::optional<Places> places;
    for (std::size_t at = 1; at < items.size(); ++at)
        if (!places && HasPlace(items[at - 1]) && HasPlace(items[at]))
            places = {CenterOf(items[at]) - CenterOf(items[at - 1]), items[at].area.Width(), items[at].area.top,
                      items[at].area.bottom};
    for (const ShownItem& item : items)
        if (places && HasPlace(item)) {
            places->top = std::min(places->top, static_cast<int>(item.area.top));
            places->bottom = std::max(places->bottom, static_cast<int>(item.area.bottom));
        }
    return places;
}

/// As many steps from the nearest item with an area as it is away.
CRect GuessedPlace(const std::vector<ShownItem>& items, std::size_t at, const Places& places) {
    const auto count = static_cast<int>(items.size());
    const auto here = static_cast<int>(at);
    for (int away = 1; away < count; ++away)
        for (const int other : {here - away, here + away}) {
            if (other < 0 || other >= count || !HasPlace(items[static_cast<std::size_t>(other)]))
                continue;
            const int center = CenterOf(items[static_cast<std::size_t>(other)]) + (here - other) * places.pitch;
            const int left = center - places.width / 2;
            return {left, places.top, left + places.width, places.bottom};
        }
    return {};
}

void AddParts(PageWords& page, const Contents& contents, const DescriptionWords& words) {
    const std::vector<CRect> places = WalkedPlaces(contents);
    for (std::size_t at = 0; at < places.size(); ++at)
        if (places[at].right > places[at].left)
            page.parts.push_back({places[at], NameOf(contents, contents.items[at], words)});
}

} // namespace

std::vector<CRect> WalkedPlaces(const Contents& contents) {
    const std::optional<Places> row = IsRow(contents) ? PlacesOf(contents.items) : std::nullopt;
    std::vector<CRect> places;
    for (std::size_t at = 0; at < contents.items.size(); ++at) {
        const ShownItem& item = contents.items[at];
        CRect place = item.area;
        if (!HasPlace(item) && row)
            place = GuessedPlace(contents.items, at, *row);
        if (place.right > place.left)
            place.DeflateRect(-kEdge, -kEdge);
        places.push_back(place);
    }
    return places;
}

PageWords WordsFor(const std::vector<Contents>& pictures, const DescriptionWords& words) {
    PageWords page;
    page.language = words.Language();
    if (pictures.empty()) {
        page.title = words.Say(words.m_strNameless);
        return page;
    }
    page.title = TitleOf(pictures.front(), words);
    if (pictures.size() == 1) {
        page.description = Details(pictures.front(), words);
        return page;
    }
    page.title = words.Say(words.m_strTitles, {{"from", page.title}, {"to", TitleOf(pictures.back(), words)}});
    for (const Contents& picture : pictures)
        page.description += (page.description.empty() ? "" : words.Say(words.m_strBetween)) + Describe(picture, words);
    return page;
}

PageWords WalkedWordsFor(const std::vector<Contents>& pictures, const DescriptionWords& words) {
    PageWords page = WordsFor(pictures, words);
    for (const Contents& picture : pictures)
        AddParts(page, picture, words);
    return page;
}

} // namespace melkar
