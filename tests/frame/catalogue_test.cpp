#include "support/temp_workdir.h"

#include <MelkarCommon/catalogue.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/key_reference.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/platform/surface.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

TEST(Catalogue, BasesAndKindsAreNamedOnce) {
    std::set<std::string> names{""};
    std::set<std::string> kinds;
    for (const melkar::GraphClass& graph : melkar::Catalogue()) {
        EXPECT_TRUE(names.contains(graph.base)) << graph.name << " stands before its base";
        EXPECT_TRUE(names.insert(graph.name).second) << graph.name;
        EXPECT_EQ(graph.make != nullptr, *graph.kind != '\0') << graph.name;
        EXPECT_TRUE(!graph.make || kinds.insert(graph.kind).second) << graph.kind;
    }
    EXPECT_EQ(melkar::FindClassOfKind(""), nullptr) << "a base is no kind";
}

TEST(Catalogue, KeysComeFromTheRootDown) {
    std::string tables;
    for (const melkar::ClassKeys& keys : melkar::KeysReadBy(*melkar::FindClassOfKind("activity")))
        tables += std::string(keys.className) + " ";
    EXPECT_EQ(tables, "CGraph CBarGraph CLineGraph CExpenditureGraph ");
}

TEST(Catalogue, StarterProfilesAreReadToTheLastLine) {
    for (const melkar::GraphClass& graph : melkar::Catalogue()) {
        const std::string starter = graph.starter;
        const std::string profile = melkar::StarterProfile(graph.kind, "A");
        EXPECT_EQ(profile.empty(), *graph.kind == '\0') << graph.name;
        const auto lines = std::count(profile.begin(), profile.end(), '\n'); // two name a section
        EXPECT_TRUE(profile.empty() || lines == std::count(starter.begin(), starter.end(), '\n') + 3)
            << "a class doesn't read all of it:\n"
            << profile;
    }
    const std::string page = melkar::KeyReferenceOf("activity");
    EXPECT_NE(page.find("| `600` (needed) | top"), std::string::npos) << "a base's key with the value of this kind";
    EXPECT_EQ(melkar::KeyReferenceOf("CBarGraph"), "") << "a class is no kind";
}

TEST(Catalogue, EveryClassDrawsWithoutProfileAndData) {
    const TempWorkdir work;
    const std::size_t before = LiveObjectCount();
    char path[] = "none.csv";
    for (const melkar::GraphClass& graph : melkar::Catalogue()) {
        if (!graph.make)
            continue;
        const HDC screen = CreateMemorySurface(160, 120);
        {
            const auto one = graph.make(nullptr, screen, "A", screen, screen, screen);
            for (const CRect& area : {CRect(0, 0, 160, 120), CRect(5, 5, 4, 4), CRect(0, 0, 0, 120)})
                EXPECT_STRNE(melkar::ResultText(one->Draw(area, path)), "unknown result") << graph.name;
        }
        DeleteDC(screen);
        EXPECT_EQ(LiveObjectCount(), before) << graph.name;
    }
}

} // namespace
