#pragma once

#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/platform/desktop.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using testing::AllOf, testing::Contains, testing::ElementsAre, testing::EndsWith, testing::HasSubstr, testing::IsEmpty;
using testing::IsSupersetOf, testing::Not, testing::SizeIs, testing::StartsWith;

/// A line of `count` columns: "3=x 7=" puts x into column 3 and nothing into column 7. The others hold `rest`; a rest
/// of "#" stands for each column's number.
inline std::string Row(int count, const std::string& fields, const std::string& rest = "") {
    std::vector<std::string> columns(count, rest);
    for (int i = 0; i < count && rest == "#"; ++i)
        columns[i] = std::to_string(i);
    std::istringstream input(fields);
    for (std::string field; input >> field;)
        columns.at(std::stoi(field)) = field.substr(field.find('=') + 1);
    std::string row;
    for (const std::string& column : columns)
        row.append(column).append(",");
    row.back() = '\n';
    return row;
}

inline CStringArray Texts(const std::vector<const char*>& texts) {
    CStringArray array;
    for (const char* text : texts)
        array.Add(text);
    return array;
}

inline std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream input(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(input, line);)
        lines.push_back(line);
    return lines;
}

/// The lines of a record that begin with `prefix` and end with `suffix`.
inline std::vector<std::string> LinesWith(const std::vector<std::string>& lines, std::string_view prefix,
                                          std::string_view suffix = "") {
    std::vector<std::string> found;
    for (const std::string& line : lines)
        if (line.starts_with(prefix) && line.ends_with(suffix))
            found.push_back(line);
    return found;
}

/// The texts in a record that begin at `x`, each with its top: "60@413|65@338".
inline std::string TextsAt(const std::vector<std::string>& lines, int x) {
    std::string found;
    const std::string at = "\" " + std::to_string(x) + ",";
    for (const std::string& line : LinesWith(lines, "text \""))
        if (const std::size_t end = line.find(at); end != std::string::npos) {
            const std::size_t top = end + at.size();
            found.append(found.empty() ? "" : "|").append(line, 6, end - 6).append("@");
            found.append(line, top, line.find(' ', top) - top);
        }
    return found;
}

/// Holds a record to `pieces`, in this order, whatever stands between them.
inline void ExpectInOrder(const std::string& record, const std::vector<const char*>& pieces) {
    std::size_t at = 0;
    for (const char* piece : pieces) {
        at = record.find(piece, at);
        ASSERT_NE(at, std::string::npos) << piece << " is not there or not behind the one before it in\n" << record;
    }
}

/// A host's directory, and a surface that records. Texts have fixed metrics: a character is 3/5 of the em height wide,
/// a line 5/4 of it high, both rounded up. At 96 dpi 10 points are 8 x 17, 12 points 10 x 20, 15 points 12 x 25,
/// 30 points 24 x 50; the 12 pixels of a new surface's font are 8 x 15.
class HostTest : public testing::Test {
protected:
    explicit HostTest(std::string_view profile = "") { m_files.Write("conf/graph.cnf", profile); }
    ~HostTest() override {
        DeleteDC(m_record);
        EXPECT_EQ(LiveObjectCount(), m_liveBefore) << "every test hands back its surfaces and drawing objects";
    }

    /// A graph of section OWN that paints straight onto the recording surface.
    template <class Graph, class... More> Graph Make(More... more) {
        return {nullptr, m_record, "OWN", nullptr, nullptr, nullptr, more...};
    }

    std::string DataFile(std::string_view data) const { return m_files.Write("bin/data.csv", data); }
    long Read(CGraph& graph, std::string_view data) const { return graph.ReadDataFile(DataFile(data).data()); }

    /// What a cycle puts on a new record.
    std::string Record(CGraph& graph, std::string_view data, CRect area) {
        DeleteDC(m_record);
        m_record = CreateRecordingSurface(1200, 700);
        graph.Initialize(nullptr, m_record, nullptr, nullptr, nullptr);
        graph.SetDirectOutput(1);
        EXPECT_EQ(graph.Draw(area, DataFile(data).data()), 0);
        return GetRecording(m_record);
    }

    /// What painting on the record leaves of red texts on opaque green: as in "opaque red green".
    template <class Paint> std::string LeftBy(Paint paint) {
        SetBkMode(m_record, OPAQUE);
        SetTextColor(m_record, RGB(255, 0, 0));
        SetBkColor(m_record, RGB(0, 255, 0));
        paint();
        const auto name = [](COLORREF color) {
            return color == RGB(255, 0, 0) ? "red" : color == RGB(0, 255, 0) ? "green" : std::to_string(color);
        };
        const std::string mode = SetBkMode(m_record, OPAQUE) == OPAQUE ? "opaque " : "transparent ";
        return mode + name(SetTextColor(m_record, 0)) + " " + name(SetBkColor(m_record, 0));
    }

    TempWorkdir m_files;
    char m_missing[12] = "missing.csv"; ///< no such file
    std::size_t m_liveBefore = LiveObjectCount();
    HDC m_record = CreateRecordingSurface(1200, 700);
};
