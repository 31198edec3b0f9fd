#pragma once

#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/platform/surface.h>
#include <support/temp_workdir.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

/// A host's directory, and a surface that records. Texts have fixed metrics: a character is 3/5 of the em height wide,
/// a line 5/4 of it high, both rounded up. At 96 dpi 10 points are 8 x 17, 12 points 10 x 20, 15 points 12 x 25.
class HostTest : public testing::Test {
protected:
    explicit HostTest(std::string_view profile) { m_files.Write("conf/graph.cnf", profile); }
    ~HostTest() override {
        DeleteDC(m_surface);
        EXPECT_EQ(LiveObjectCount(), m_liveBefore) << "every test hands back its surfaces and drawing objects";
    }

    /// A graph of section OWN that paints straight onto the recording surface.
    template <class Graph> Graph Make() { return {nullptr, m_surface, "OWN", nullptr, nullptr, nullptr}; }

    std::string DataFile(std::string_view data) const { return m_files.Write("bin/data.csv", data); }
    long Read(CGraph& graph, std::string_view data) const { return graph.ReadDataFile(DataFile(data).data()); }

    /// What a cycle puts on a new recording surface.
    std::string Record(CGraph& graph, std::string_view data, CRect area) {
        DeleteDC(m_surface);
        m_surface = CreateRecordingSurface(1200, 700);
        graph.Initialize(nullptr, m_surface, nullptr, nullptr, nullptr);
        graph.SetDirectOutput(1);
        EXPECT_EQ(graph.Draw(area, DataFile(data).data()), 0);
        return GetRecording(m_surface);
    }

    TempWorkdir m_files;
    std::size_t m_liveBefore = LiveObjectCount();
    HDC m_surface = CreateRecordingSurface(1200, 700);
};
