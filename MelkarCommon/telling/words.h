#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/cstring.h>

#include <initializer_list>
#include <string>
#include <vector>

/// @file
/// The sentences in which pictures are described, in the language of a profile.

namespace melkar {

/// What takes the place of "__name__" in a sentence.
struct Filling {
    const char* name; ///< without the lines
    std::string text; ///< UTF-8
};

/// Sentences with gaps, as section DESCRIPTION of a profile has them, in English where it has none. A text that counts
/// has its forms behind each other, with a bar between them: one form alone is for all numbers, the first of two for 1;
/// of three the first is for 1, 21, 31, ..., the second for 2 to 4, 22 to 24, ..., the third for all others.
class MELKAR_API DescriptionWords {
public:
    static constexpr const char* kSection = "DESCRIPTION"; ///< of the profile

    /// @param profile path of it
    explicit DescriptionWords(const char* profile = kGraphProfile);

    /// The keys of the section.
    static ClassKeys ProfileKeys();

    /// One of the texts below with its gaps filled, in UTF-8.
    std::string Say(const CString& sentence, std::initializer_list<Filling> fillings = {}) const;
    /// The same in the form for a number, which fills "__n__".
    std::string SayCount(const CString& sentence, long number, std::initializer_list<Filling> fillings = {}) const;
    /// Names behind each other; of many the first few, and how many more there are.
    std::string List(const std::vector<std::string>& names) const;
    /// Of the words: "ja" of the profile's locale "ja_JP.UTF-8"; "en" if it tells none.
    std::string Language() const;

    /// @name What is said of a picture
    /// @{
    CString m_strNameless;      ///< in place of a missing title
    CString m_strTitles;        ///< of a picture of several, from the first to the last
    CString m_strSentence;      ///< what ends a sentence
    CString m_strBetween;       ///< between sentences
    CString m_strComma;         ///< between names
    CString m_strSemicolon;     ///< between items
    CString m_strMore;          ///< behind names, for those that aren't told; counts
    CString m_strEntries;       ///< how many items; counts
    CString m_strRange;         ///< the first and the last of them
    CString m_strSingle;        ///< the only one
    CString m_strScale;         ///< ends of the scale at the left
    CString m_strScaleRight;    ///< of that at the right
    CString m_strScaleBelow;    ///< of that below
    CString m_strFigures;       ///< highest, lowest and mean figure
    CString m_strSeriesFigures; ///< of a series
    CString m_strReached;       ///< how many items come up to their target; counts
    CString m_strExcluded;      ///< which are excluded
    CString m_strMissing;       ///< which have no figure
    CString m_strBeyond;        ///< which leave their scale
    CString m_strMark;          ///< a mark and its figures
    /// @}

    /// @name What has no name in the picture
    /// @{
    CString m_strSum;     ///< of a stack
    CString m_strSeries;  ///< a series, by its number
    CString m_strTarget;  ///< a mark
    CString m_strAverage; ///< a mark
    CString m_strEvent;   ///< a mark
    CString m_strBorder;  ///< a mark
    /// @}

    /// @name An item
    /// @{
    CString m_strItem;       ///< its caption and figure
    CString m_strItemOfUnit; ///< with the unit
    CString m_strOfSeries;   ///< one of several figures
    /// @}

    /// @name The table
    /// @{
    CString m_strPartHead;     ///< of titles, where there are several
    CString m_strEntryHead;    ///< of captions
    CString m_strFigureHead;   ///< of figures without a name
    CString m_strReachedHead;  ///< whether it came up to the target
    CString m_strNoteHead;     ///< what else there is to say
    CString m_strYes;          ///< it did
    CString m_strNo;           ///< it didn't
    CString m_strExcludedNote; ///< of a day
    CString m_strMissingNote;  ///< of an item without a figure
    CString m_strBeyondNote;   ///< of a figure that leaves its scale
    /// @}

    CString m_strLocale; ///< of the profile
    long m_nCharset = 0; ///< of texts that aren't UTF-8

private:
    struct KeyRows;
};

} // namespace melkar
