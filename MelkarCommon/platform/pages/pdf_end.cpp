#include <MelkarCommon/platform/pages/pdf_addition.h>

#include <MelkarCommon/platform/text/text_decode.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

constexpr std::string_view kTable = "startxref\n"; // before the place of the table of objects
constexpr std::string_view kTrailer = "trailer\n<<";

/// The character at the start of valid UTF-8 of that length.
std::uint32_t CodePoint(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character.front());
    std::uint32_t code = character.size() == 1 ? lead : lead & (0x7FU >> character.size());
    for (const char byte : character.substr(1))
        code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    return code;
}

std::string Utf16(std::string_view utf8) {
    std::string units = "\xFE\xFF"; // which says what they are
    const auto add = [&](std::uint32_t unit) {
        units.append({static_cast<char>(unit >> 8U), static_cast<char>(unit)});
    };
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t length = LengthAt(utf8, at);
        const std::uint32_t code = CodePoint(utf8.substr(at, length));
        if (code < 0x10000) {
            add(code);
        } else {
            add(0xD800 + ((code - 0x10000) >> 10U));
            add(0xDC00 + ((code - 0x10000) & 0x3FFU));
        }
        at += length;
    }
    return units;
}

/// A text as an object of the file.
std::string TextObject(const std::string& utf8) {
    const bool isPlain =
        std::all_of(utf8.begin(), utf8.end(), [](char byte) { return byte == '\n' || (byte >= ' ' && byte <= '~'); });
    std::string object = "(";
    for (const char byte : isPlain ? utf8 : Utf16(utf8)) {
        if (byte == '(' || byte == ')' || byte == '\\')
            object += '\\';
        object += byte == '\r' ? "\\r" : std::string(1, byte); // a bare one would be read as a line feed
    }
    return object + ")";
}

std::string BoxObject(const Area& area) {
    const auto whole = [](double edge) { return std::to_string(std::lround(edge)); };
    return "[ " + whole(area.left) + " " + whole(area.top) + " " + whole(area.right) + " " + whole(area.bottom) + " ]";
}

std::string EntriesOf(const FigureWords& figure) {
    return (figure.text.empty() ? "" : "   /Alt " + TextObject(figure.text) + "\n") + "   /A << /O /Layout /BBox " +
           BoxObject(figure.area) + " >>\n";
}

std::string EntriesOf(const DocumentWords& words) {
    return (words.language.empty() ? "" : "   /Lang " + TextObject(words.language) + "\n") +
           "   /ViewerPreferences << /DisplayDocTitle true >>\n";
}

/// Later versions of objects, and the rows of a table of them.
class Addition {
public:
    Addition(std::string_view end, std::size_t at) : m_end(end), m_begin(at + end.size()) {}

    /// Says the objects that hold `head` anew, with entries behind it. @return how many
    template <class Entries> std::size_t Change(std::string_view head, const Entries& entries) {
        std::size_t count = 0;
        for (std::size_t at = m_end.find(head); at != std::string_view::npos; at = m_end.find(head, at + head.size()))
            Add(at + head.size(), entries(count++));
        return count;
    }
    /// @param trailer that of the file @param table where its table begins
    std::string Finish(std::string_view trailer, std::string_view table) {
        const std::string begin = std::to_string(m_begin + m_objects.size());
        return m_objects + "xref\n" + m_rows + std::string(kTrailer) + " /Prev " + std::string(table) +
               std::string(trailer.substr(kTrailer.size())) + std::string(kTable) + begin + "\n%%EOF\n";
    }

private:
    /// @param inside a place in the object
    void Add(std::size_t inside, const std::string& entries) {
        constexpr std::string_view kHead = " 0 obj\n";
        constexpr std::string_view kTail = "endobj\n";
        const std::size_t head = m_end.rfind(kHead, inside);
        const std::size_t tail = m_end.find(kTail, inside);
        if (head == std::string_view::npos || tail == std::string_view::npos)
            return;
        const std::size_t begin = m_end.rfind('\n', head) + 1;
        const std::string offset = std::to_string(m_begin + m_objects.size());
        m_rows += std::string(m_end.substr(begin, head - begin)) + " 1\n" + std::string(10 - offset.size(), '0') +
                  offset + " 00000 n \n";
        m_objects += std::string(m_end.substr(begin, inside - begin)) + entries +
                     std::string(m_end.substr(inside, tail + kTail.size() - inside));
    }

    std::string_view m_end;
    std::size_t m_begin; ///< in the file
    std::string m_objects;
    std::string m_rows;
};

} // namespace

std::string AdditionTo(std::string_view end, std::size_t at, const DocumentWords& words) {
    const std::size_t trailer = end.rfind(kTrailer);
    const std::size_t table = end.rfind(kTable);
    if (trailer == std::string_view::npos || table == std::string_view::npos || table < trailer)
        return "";
    Addition addition(end, at);
    const std::size_t figures = addition.Change("/Type /StructElem\n   /S /Figure\n", [&](std::size_t index) {
        return index < words.figures.size() ? EntriesOf(words.figures[index]) : "";
    });
    if (figures != words.figures.size() ||
        addition.Change("<< /Type /Catalog\n", [&](std::size_t) { return EntriesOf(words); }) != 1)
        return "";
    const std::size_t number = table + kTable.size();
    return addition.Finish(end.substr(trailer, table - trailer), end.substr(number, end.find('\n', number) - number));
}

} // namespace melkar
