#include <MelkarCommon/telling/describe.h>

#include <MelkarCommon/telling/numbers.h>
#include <MelkarCommon/telling/reading.h>

#include <algorithm>

namespace melkar {

namespace {

constexpr std::size_t kMostItems = 12; // that are told one by one
const char* const kSentenceEnds[] = {".", "!", "?", "。"};

/// Sentences behind each other, in one language.
class Paragraph {
public:
    explicit Paragraph(const DescriptionWords& words) : m_words(words) {}

    /// A sentence may end with an abbreviation: "Scale: 0 to 160, mm Hg."
    void Add(const std::string& sentence) {
        if (sentence.empty())
            return;
        m_text += (m_text.empty() ? "" : m_words.Say(m_words.m_strBetween)) + sentence;
        if (m_text.ends_with("..") && !m_text.ends_with("..."))
            m_text.pop_back();
    }
    /// A text that may lack the end of a sentence.
    void AddText(const std::string& text) {
        const std::string line = OnOneLine(text);
        const bool isWhole = std::any_of(std::begin(kSentenceEnds), std::end(kSentenceEnds),
                                         [&](const char* end) { return line.ends_with(end); });
        if (!line.empty())
            Add(isWhole ? line : m_words.Say(m_words.m_strSentence, {{"text", line}}));
    }
    const std::string& Text() const { return m_text; }

private:
    const DescriptionWords& m_words;
    std::string m_text;
};

/// Writes what is said of one picture.
class Description {
public:
    Description(const Contents& contents, const DescriptionWords& words)
        : m_contents(contents), m_words(words), m_paragraph(words) {}

    std::string Write() {
        m_paragraph.AddText(m_contents.title);
        return WriteDetails();
    }
    std::string Write(const ShownPage& page) {
        m_paragraph.AddText(page.name);
        AddItems();
        for (const std::string& text : page.texts)
            m_paragraph.AddText(text);
        return m_paragraph.Text();
    }
    std::string WriteDetails() {
        for (const std::string& message : m_contents.messages)
            m_paragraph.AddText(message);
        AddRange();
        AddScales();
        AddFigures();
        AddReached();
        AddExceptions();
        AddMarks();
        AddTexts();
        return m_paragraph.Text();
    }

private:
    void AddRange();
    void AddScales();
    void AddFigures();
    void AddReached();
    void AddExceptions();
    void AddMarks();
    void AddItems();
    void AddTexts();
    bool AreListed() const;
    void AddSummary(const std::string& name, const std::vector<ToldFigure>& figures);
    void AddNames(const CString& sentence, bool (*belongs)(const ShownItem& item));

    const Contents& m_contents;
    const DescriptionWords& m_words;
    Paragraph m_paragraph;
};

void Description::AddRange() {
    const std::vector<const ShownItem*> items = EntriesOf(m_contents);
    const bool isHidden = m_contents.axes.empty() && !m_contents.messages.empty(); // a message stands in their place
    if (items.empty() || (AreListed() && !isHidden))
        return;
    const std::string entries = m_words.SayCount(m_words.m_strEntries, static_cast<long>(items.size()));
    const std::string first = CaptionOf(*items.front(), items);
    const std::string last = CaptionOf(*items.back(), items);
    m_paragraph.Add(items.size() == 1
                        ? m_words.Say(m_words.m_strSingle, {{"entries", entries}, {"at", first}})
                        : m_words.Say(m_words.m_strRange, {{"entries", entries}, {"from", first}, {"to", last}}));
}

void Description::AddScales() {
    for (const ShownAxis& axis : m_contents.axes) {
        if (!axis.HasValues()) {
            if (axis.side == AxisSide::Bottom)
                m_paragraph.AddText(axis.label); // of captions: what the person who chose it has to say of the chart
            continue;
        }
        const CString& sentence = axis.side == AxisSide::Left    ? m_words.m_strScale
                                  : axis.side == AxisSide::Right ? m_words.m_strScaleRight
                                                                 : m_words.m_strScaleBelow;
        const std::string label = OnOneLine(axis.label);
        std::string to = NumberText(axis.to);
        if (!label.empty())
            to += m_words.Say(m_words.m_strComma) + label;
        m_paragraph.Add(m_words.Say(sentence, {{"from", NumberText(axis.from)}, {"to", to}}));
    }
}

/// Items that stand along no axis have no order in which a highest or lowest one would tell more than all of them.
bool Description::AreListed() const { return !IsRow(m_contents) && m_contents.items.size() <= kMostItems; }

void Description::AddFigures() {
    if (AreListed()) {
        AddItems();
        return;
    }
    if (IsStack(m_contents)) {
        const std::string whole = OnOneLine(m_contents.whole);
        AddSummary(whole.empty() ? m_words.Say(m_words.m_strSum) : whole, SumsOf(m_contents));
    }
    const bool isAlone = m_contents.series.size() == 1;
    for (std::size_t series = 0; series < m_contents.series.size(); ++series)
        AddSummary(isAlone ? "" : NameOfSeries(m_contents, series, m_words), FiguresOf(m_contents, series));
}

void Description::AddItems() {
    std::string list;
    for (const ShownItem& item : m_contents.items)
        if (Counts(item))
            list += (list.empty() ? "" : m_words.Say(m_words.m_strSemicolon)) + NameOf(m_contents, item, m_words);
    m_paragraph.AddText(list);
}

/// @param name empty: there is but one series
void Description::AddSummary(const std::string& name, const std::vector<ToldFigure>& figures) {
    if (figures.empty())
        return;
    if (figures.size() == 1 && !name.empty()) { // of one there is neither a highest nor a mean
        m_paragraph.Add(m_words.Say(m_words.m_strMark, {{"name", name}, {"figures", figures.front().text}}));
        return;
    }
    const auto isLess = [](const ToldFigure& one, const ToldFigure& other) { return one.value < other.value; };
    const auto [lowest, last] = std::minmax_element(figures.begin(), figures.end(), isLess);
    const auto highest = std::max_element(figures.begin(), figures.end(), isLess); // the first of equal ones
    m_paragraph.Add(
        m_words.Say(name.empty() ? m_words.m_strFigures : m_words.m_strSeriesFigures, {{"name", name},
                                                                                       {"highest", highest->text},
                                                                                       {"highest-at", highest->at},
                                                                                       {"lowest", lowest->text},
                                                                                       {"lowest-at", lowest->at},
                                                                                       {"mean", MeanOf(figures)}}));
}

void Description::AddReached() {
    long all = 0;
    long reached = 0;
    for (const ShownItem& item : m_contents.items) {
        all += Counts(item) && item.reached ? 1 : 0;
        reached += Counts(item) && item.reached.value_or(false) ? 1 : 0;
    }
    if (all > 0)
        m_paragraph.Add(m_words.SayCount(m_words.m_strReached, reached, {{"all", std::to_string(all)}}));
}

void Description::AddNames(const CString& sentence, bool (*belongs)(const ShownItem& item)) {
    std::vector<std::string> names;
    for (const ShownItem& item : m_contents.items)
        if (belongs(item) && !OnOneLine(item.caption).empty())
            names.push_back(OnOneLine(item.caption));
    if (!names.empty())
        m_paragraph.Add(m_words.Say(sentence, {{"names", m_words.List(names)}}));
}

void Description::AddExceptions() {
    AddNames(m_words.m_strExcluded, IsExcluded);
    AddNames(m_words.m_strMissing, IsWithout);
    if (!AreListed()) // where each tells it
        AddNames(m_words.m_strBeyond, IsBeyond);
}

void Description::AddTexts() {
    std::string list;
    for (const std::string& text : m_contents.texts)
        list += (list.empty() ? "" : m_words.Say(m_words.m_strSemicolon)) + OnOneLine(text);
    m_paragraph.AddText(list);
}

std::string NameOfKind(MarkKind kind, const DescriptionWords& words) {
    switch (kind) {
    case MarkKind::Target:
        return words.Say(words.m_strTarget);
    case MarkKind::Average:
        return words.Say(words.m_strAverage);
    case MarkKind::Event:
        return words.Say(words.m_strEvent);
    case MarkKind::Border:
        return words.Say(words.m_strBorder);
    }
    return "";
}

/// By its label, unless that only says which axis it belongs to.
std::string NameOfMark(const Contents& contents, const ShownMark& mark, const DescriptionWords& words) {
    const std::string label = OnOneLine(mark.label);
    if (label.empty())
        return NameOfKind(mark.kind, words);
    const bool isOfAxis = std::any_of(contents.axes.begin(), contents.axes.end(),
                                      [&](const ShownAxis& axis) { return OnOneLine(axis.label) == label; });
    return isOfAxis ? NameOfKind(mark.kind, words) + words.Say(words.m_strComma) + label : label;
}

/// Marks of one name that follow each other make one sentence, and those of one figure are one. Those without a figure
/// are borders that the classes' names tell.
void Description::AddMarks() {
    const auto& marks = m_contents.marks;
    for (std::size_t first = 0; first < marks.size();) {
        const std::string name = NameOfMark(m_contents, marks[first], m_words);
        std::vector<std::string> figures;
        for (; first < marks.size() && NameOfMark(m_contents, marks[first], m_words) == name; ++first)
            if (figures.empty() || figures.back() != marks[first].text)
                figures.push_back(OnOneLine(marks[first].text));
        std::erase(figures, "");
        if (figures.empty())
            continue;
        const bool isSaid = figures.size() == 1 && name.find(figures.front()) != std::string::npos; // "Target: 8000"
        if (isSaid)
            m_paragraph.AddText(name);
        else
            m_paragraph.Add(m_words.Say(m_words.m_strMark, {{"name", name}, {"figures", m_words.List(figures)}}));
    }
}

/// What an item says behind its caption.
std::string FiguresIn(const Contents& contents, const ShownItem& item, const DescriptionWords& words) {
    if (item.figures.size() == 1)
        return OnOneLine(item.figures.front().text);
    std::vector<std::string> figures;
    for (const ShownFigure& figure : item.figures)
        figures.push_back(words.Say(words.m_strOfSeries,
                                    {{"name", NameOfSeries(contents, static_cast<std::size_t>(figure.series), words)},
                                     {"figure", OnOneLine(figure.text)}}));
    return figures.empty() ? OnOneLine(item.text) : words.List(figures);
}

} // namespace

std::string Describe(const Contents& contents, const DescriptionWords& words) {
    return Description(contents, words).Write();
}

std::string Describe(const ShownPage& page, const DescriptionWords& words) {
    return Description(page.heading, words).Write(page);
}

std::string Details(const Contents& contents, const DescriptionWords& words) {
    return Description(contents, words).WriteDetails();
}

std::string NameOf(const Contents& contents, const ShownItem& item, const DescriptionWords& words) {
    const std::string caption = OnOneLine(item.caption);
    const std::string unit = contents.series.size() == 1 ? OnOneLine(contents.unit) : "";
    const std::string figures = FiguresIn(contents, item, words);
    std::string name = figures;
    if (!caption.empty() && !figures.empty())
        name = words.Say(unit.empty() ? words.m_strItem : words.m_strItemOfUnit,
                         {{"caption", caption}, {"figure", figures}, {"unit", unit}});
    const std::string note = NoteOn(item, words);
    if (note.empty())
        return name.empty() ? caption : name;
    return figures.empty() ? words.Say(words.m_strItem, {{"caption", caption}, {"figure", note}})
                           : name + words.Say(words.m_strComma) + note;
}

std::string NameOf(const Contents& contents, const DescriptionWords& words) { return TitleOf(contents, words); }

} // namespace melkar
