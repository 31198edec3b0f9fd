#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_check.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>
#include <MelkarCommon/support/numbers.h>
#include <frame/host_fixture.h>

namespace {

class Files : public HostTest {
protected:
    /// Holds what stands in a member to the field that it was read from: numbers by value, texts with what is around
    /// them.
    static void ExpectLanded(const std::string& shown, const CString& field, const melkar::ColumnInfo& column) {
        if (column.kind == melkar::ColumnKind::Figure || column.kind == melkar::ColumnKind::Whole)
            EXPECT_NEAR(melkar::ToDouble(shown.c_str()), melkar::ToDouble(field) / column.perUnit, 1e-3) << column.name;
        else
            EXPECT_THAT(shown, HasSubstr(field.GetString())) << column.name;
    }

    /// Every field of the example, which a graph has read if it takes them up itself.
    static void ExpectLanded(const melkar::DataTable& table, const CGraph* graph) {
        const std::vector<std::string> lines = LinesOf(melkar::ExampleFile(table));
        for (std::size_t number = 0; number < table.columns.size(); ++number) {
            const melkar::ColumnInfo& column = table.columns[number];
            const int first = column.head == melkar::kEachRow ? table.form.heads : column.head;
            const int end = column.head == melkar::kEachRow ? static_cast<int>(lines.size()) : first + 1;
            ASSERT_LT(first, end) << "no row";
            for (int line = first; line < end; ++line)
                for (int i = 0; i < column.count; ++i) {
                    const melkar::CsvRow row(lines[static_cast<std::size_t>(line)].c_str());
                    ExpectLanded(table.shown[number](graph, row, line - first, i), row.Field(column.index + i), column);
                }
        }
    }
};

TEST_F(Files, ExamplesLandInTheirMembersAndDraw) {
    for (const melkar::KindRow& kind : melkar::Catalogue()) {
        const melkar::DataTables files = melkar::FilesReadBy(kind);
        if (*kind.kind == '\0' || files.empty())
            continue;
        SCOPED_TRACE(kind.kind);
        m_files.Write("conf/graph.cnf", melkar::StarterProfile(kind.kind, "OWN"));
        for (const melkar::DataTable& file : files) {
            m_files.Write((std::string("bin/data.csv") + file.suffix).c_str(), melkar::ExampleFile(file));
            EXPECT_EQ(melkar::CheckData(file, "data.csv", 1, 0).count, 0U);
        }
        std::unique_ptr<CGraph> graph;
        if (kind.make) {
            graph = kind.make(nullptr, m_record, "OWN", nullptr, nullptr, nullptr);
            const CRect area(0, 0, 600, 400);
            const std::string empty = Record(*graph, "", area);
            EXPECT_GT(Record(*graph, melkar::ExampleFile(files.front()), area).size(), empty.size());
        }
        for (const melkar::DataTable& file : files)
            ExpectLanded(file, graph.get());
    }
}

} // namespace
