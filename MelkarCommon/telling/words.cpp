#include <MelkarCommon/telling/words.h>

#include <MelkarCommon/support/utf8.h>

#include <algorithm>
#include <string_view>

namespace melkar {

namespace {

constexpr std::size_t kMostNames = 7; // of a list that is read to somebody

/// Which of three forms a number takes; 11 to 14 take the last one.
std::size_t FormOfThree(long number) {
    const long tens = number % 100;
    const long ones = number % 10;
    if (tens >= 11 && tens <= 14)
        return 2;
    return ones == 1 ? 0 : ones >= 2 && ones <= 4 ? 1 : 2;
}

std::string_view FormFor(std::string_view forms, long number) {
    const auto count = static_cast<std::size_t>(std::count(forms.begin(), forms.end(), '|')) + 1;
    std::size_t form = count == 2 ? std::size_t{number != 1} : count == 3 ? FormOfThree(number) : 0;
    for (; form > 0; --form)
        forms.remove_prefix(forms.find('|') + 1);
    return forms.substr(0, forms.find('|'));
}

/// Gaps whose name nobody fills stay. What fills a gap is no sentence: gaps in it stay as well.
std::string Filled(std::string_view sentence, std::initializer_list<Filling> fillings) {
    std::string filled;
    while (!sentence.empty()) {
        const auto fits = [&](const Filling& filling) {
            return sentence.starts_with("__" + std::string(filling.name) + "__");
        };
        const Filling* found = std::find_if(fillings.begin(), fillings.end(), fits);
        if (found == fillings.end()) {
            filled += sentence.front();
            sentence.remove_prefix(1);
            continue;
        }
        filled += found->text;
        sentence.remove_prefix(std::string_view(found->name).size() + 4);
    }
    return filled;
}

/// A text in English, as long as the profile has none.
struct WordKeys : Keys<DescriptionWords> {
    template <auto Member> static constexpr Row Say(const char* key, const char* english, const char* says) {
        return Text<Member>(Own, key, says).Else(english).Example(english);
    }
};

} // namespace

struct DescriptionWords::KeyRows : WordKeys {
    static constexpr Row rows[] = {
        Number<&G::m_nCharset>(Common, "CHARSET", 0, "character set of texts that aren't UTF-8"),
        Text<&G::m_strLocale>(Common, "LOCALE", "its first two letters are the language").Example("en_US.UTF-8"),
        Say<&G::m_strNameless>("NAMELESS", "Chart", "title of a picture without one"),
        Say<&G::m_strTitles>("TITLES", "__from__ – __to__", "title of a picture of several with titles of their own"),
        Say<&G::m_strSentence>("SENTENCE", "__text__.", "what ends a sentence"),
        Say<&G::m_strBetween>("BETWEEN", " ", "between sentences"),
        Say<&G::m_strComma>("COMMA", ", ", "between names"),
        Say<&G::m_strSemicolon>("SEMICOLON", "; ", "between items with their figures"),
        Say<&G::m_strMore>("MORE", "__names__ and __n__ more", "a list of names that goes on; counts"),
        Say<&G::m_strEntries>("ENTRIES", "__n__ entry|__n__ entries", "how many items; counts"),
        Say<&G::m_strRange>("RANGE", "__entries__, __from__ to __to__.", "the first and the last item"),
        Say<&G::m_strSingle>("SINGLE", "__entries__, __at__.", "the only item"),
        Say<&G::m_strScale>("SCALE", "Scale: __from__ to __to__.", "ends of the scale at the left"),
        Say<&G::m_strScaleRight>("SCALE_RIGHT", "Scale at the right: __from__ to __to__.", "the same, at the right"),
        Say<&G::m_strScaleBelow>("SCALE_BELOW", "Scale below: __from__ to __to__.", "the same, below"),
        Say<&G::m_strFigures>("FIGURES",
                              "Highest __highest__ (__highest-at__), lowest __lowest__ (__lowest-at__), mean "
                              "__mean__.",
                              "figures of all items"),
        Say<&G::m_strSeriesFigures>("SERIES_FIGURES",
                                    "__name__: highest __highest__ (__highest-at__), lowest __lowest__ "
                                    "(__lowest-at__), mean __mean__.",
                                    "figures of a series or a unit"),
        Say<&G::m_strReached>("REACHED", "__n__ of __all__ reaches the target.|__n__ of __all__ reach the target.",
                              "items that come up to their target; counts"),
        Say<&G::m_strExcluded>("EXCLUDED", "Excluded: __names__.", "items that are excluded"),
        Say<&G::m_strMissing>("MISSING", "No figure: __names__.", "items without one"),
        Say<&G::m_strBeyond>("BEYOND", "Beyond the scale: __names__.", "items whose figure leaves the scale"),
        Say<&G::m_strMark>("MARK", "__name__: __figures__.", "a target, average, event or border"),
        Say<&G::m_strSum>("SUM", "Total", "the sum of a stack that has no legend"),
        Say<&G::m_strSeries>("SERIES", "Series __n__", "a series without a name"),
        Say<&G::m_strTarget>("TARGET", "Target", "a target without a legend"),
        Say<&G::m_strAverage>("AVERAGE", "Average", "an average without a legend"),
        Say<&G::m_strEvent>("EVENT", "Events", "events"),
        Say<&G::m_strBorder>("BORDER", "Class borders", "borders of classes"),
        Say<&G::m_strItem>("ITEM", "__caption__: __figure__", "an item"),
        Say<&G::m_strItemOfUnit>("ITEM_OF_UNIT", "__caption__: __figure__ __unit__", "an item with a unit"),
        Say<&G::m_strOfSeries>("OF_SERIES", "__name__ __figure__", "one of several figures of an item"),
        Say<&G::m_strPartHead>("HEAD_PART", "Part", "head of the column of titles"),
        Say<&G::m_strEntryHead>("HEAD_ENTRY", "Entry", "head of the column of captions"),
        Say<&G::m_strFigureHead>("HEAD_FIGURE", "Figure", "head of a column of figures without a name"),
        Say<&G::m_strReachedHead>("HEAD_REACHED", "Target reached", "head of its column"),
        Say<&G::m_strNoteHead>("HEAD_NOTE", "Note", "head of the column of what else there is to say"),
        Say<&G::m_strYes>("YES", "yes", "it came up to its target"),
        Say<&G::m_strNo>("NO", "no", "it didn't"),
        Say<&G::m_strExcludedNote>("NOTE_EXCLUDED", "excluded", "note on a day"),
        Say<&G::m_strMissingNote>("NOTE_MISSING", "no figure", "note on an item"),
        Say<&G::m_strBeyondNote>("NOTE_BEYOND", "beyond the scale", "note on a figure"),
    };
};

DescriptionWords::DescriptionWords(const char* profile) { ReadKeys(KeyRows::rows, *this, profile, kSection); }

ClassKeys DescriptionWords::ProfileKeys() { return {"DescriptionWords", InfoOf(KeyRows::rows)}; }

std::string DescriptionWords::Say(const CString& sentence, std::initializer_list<Filling> fillings) const {
    return Filled(Utf8Of(sentence, static_cast<int>(m_nCharset)), fillings);
}

std::string DescriptionWords::SayCount(const CString& sentence, long number,
                                       std::initializer_list<Filling> fillings) const {
    const std::string all = Utf8Of(sentence, static_cast<int>(m_nCharset));
    const std::string form = Filled(FormFor(all, number), {{"n", std::to_string(number)}});
    return Filled(form, fillings);
}

std::string DescriptionWords::List(const std::vector<std::string>& names) const {
    const std::size_t told = names.size() <= kMostNames + 1 ? names.size() : kMostNames; // never "and 1 more"
    std::string list;
    for (std::size_t name = 0; name < told; ++name)
        list += (name > 0 ? Say(m_strComma) : "") + names[name];
    return told == names.size() ? list : SayCount(m_strMore, static_cast<long>(names.size() - told), {{"names", list}});
}

std::string DescriptionWords::Language() const {
    constexpr int kCode = 2;
    return m_strLocale.GetLength() < kCode ? "en" : std::string(m_strLocale.GetString(), kCode);
}

} // namespace melkar
