#include <MelkarCommon/platform/images/deflate.h>
#include <MelkarCommon/platform/pages/pdf_end.h>
#include <MelkarCommon/platform/pages/pdf_objects.h>
#include <MelkarCommon/platform/pages/pdf_text.h>

#include <cmath>
#include <cstdint>
#include <new>

namespace melkar {

namespace {

std::string BoxObject(const Area& area) {
    const auto whole = [](double edge) { return std::to_string(std::lround(edge)); };
    return "[ " + whole(area.left) + " " + whole(area.top) + " " + whole(area.right) + " " + whole(area.bottom) + " ]";
}

std::string EntriesOf(const FigureWords& figure) {
    return (figure.text.empty() ? "" : "   /Alt " + PdfText(figure.text) + "\n") + "   /A << /O /Layout /BBox " +
           BoxObject(figure.area) + " >>\n";
}

std::string EntriesOf(const DocumentWords& words) {
    return (words.language.empty() ? "" : "   /Lang " + PdfText(words.language) + "\n") +
           "   /ViewerPreferences << /DisplayDocTitle true >>\n";
}

/// Gives objects what a document says.
class Words {
public:
    explicit Words(const DocumentWords& words) : m_words(words) {}

    std::string Into(std::string_view object) {
        constexpr std::string_view kFigure = "<< /Type /StructElem\n   /S /Figure\n";
        constexpr std::string_view kCatalog = "<< /Type /Catalog\n";
        if (object.starts_with(kFigure) && m_figures++ < m_words.figures.size())
            return Behind(kFigure, EntriesOf(m_words.figures[m_figures - 1]), object);
        if (object.starts_with(kCatalog) && m_catalogs++ == 0)
            return Behind(kCatalog, EntriesOf(m_words), object);
        return std::string(object);
    }
    /// Whether all of it has found its place.
    bool AreIn() const { return m_figures == m_words.figures.size() && m_catalogs == 1; }

private:
    static std::string Behind(std::string_view head, const std::string& entries, std::string_view object) {
        return std::string(head) + entries + std::string(object.substr(head.size()));
    }

    const DocumentWords& m_words;
    std::size_t m_figures = 0; ///< met
    std::size_t m_catalogs = 0;
};

/// An object of compressed bytes. @param entries what it is
std::string Stream(const std::string& entries, const std::string& bytes) {
    const Bytes deflated = Deflated({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    if (deflated.memory == nullptr)
        throw std::bad_alloc();
    return "<< " + entries + " /Filter /FlateDecode /Length " + std::to_string(deflated.count) + " >>\nstream\n" +
           std::string(reinterpret_cast<const char*>(deflated.memory.get()), deflated.count) + "\nendstream\n";
}

/// Dictionaries and lists in one compressed stream, and a compressed table of all objects. Streams stay as they are,
/// and so do numbers: those are lengths of streams, which a reader wants to know before it unpacks any.
class PackedEnd {
public:
    /// @param places of all objects, by their numbers
    PackedEnd(std::size_t at, const std::vector<std::size_t>& places) : m_at(at), m_packedNumber(places.size()) {
        for (const std::size_t place : places)
            m_rows.push_back(place == 0 ? Row{} : Row{kPlain, place, 0});
        m_rows.resize(m_packedNumber + 2);
    }

    void Add(std::size_t number, const std::string& object) {
        const bool isStream = object.ends_with("endstream\n");
        if (isStream || !(object.starts_with('<') || object.starts_with('[')))
            return AddPlain(number, object);
        m_rows[number] = {kPacked, m_packedNumber, m_packedCount++};
        m_packedPlaces += std::to_string(number) + " " + std::to_string(m_packed.size()) + "\n";
        m_packed += object;
    }
    /// @param trailer entries of it
    std::string Finish(std::string_view trailer) {
        AddPlain(m_packedNumber, Stream("/Type /ObjStm /N " + std::to_string(m_packedCount) + " /First " +
                                            std::to_string(m_packedPlaces.size()),
                                        m_packedPlaces + m_packed));
        const std::size_t place = m_at + m_plain.size();
        m_rows.back() = {kPlain, place, 0}; // it lists itself
        AddPlain(m_packedNumber + 1,
                 Stream("/Type /XRef /Size " + std::to_string(m_rows.size()) + " /W [ 1 5 4 ]\n" + std::string(trailer),
                        Table()));
        return m_plain + "startxref\n" + std::to_string(place) + "\n%%EOF\n";
    }

private:
    enum Kind : std::uint8_t { kNone, kPlain, kPacked };
    struct Row {
        Kind kind = kNone;
        std::size_t place = 0; ///< bytes before it; the number of the stream that it is packed in
        std::size_t index = 0; ///< there
    };

    void AddPlain(std::size_t number, const std::string& object) {
        m_rows[number] = {kPlain, m_at + m_plain.size(), 0};
        m_plain += std::to_string(number) + " 0 obj\n" + object + "endobj\n";
    }
    /// The highest bytes of numbers come first.
    std::string Table() const {
        std::string table;
        const auto add = [&](std::size_t number, unsigned int bytes) {
            while (bytes-- > 0)
                table += static_cast<char>(number >> 8 * bytes);
        };
        for (const Row& row : m_rows) {
            add(row.kind, 1);
            add(row.place, 5);
            add(row.index, 4);
        }
        return table;
    }

    std::size_t m_at;
    std::vector<Row> m_rows; ///< by number
    std::size_t m_packedNumber;
    std::size_t m_packedCount = 0;
    std::string m_packedPlaces;
    std::string m_packed;
    std::string m_plain;
};

} // namespace

std::string EndWith(const DocumentWords& words, std::string_view end, std::size_t at) {
    const auto read = ReadPdfEnd(end, at);
    if (!read)
        return "";
    PackedEnd packed(at, read->places);
    Words told(words);
    for (const PdfObject& object : read->objects)
        packed.Add(object.number, told.Into(object.text));
    return told.AreIn() ? packed.Finish(read->trailer) : "";
}

} // namespace melkar
