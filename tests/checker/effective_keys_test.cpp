#include <MelkarCommon/checker/effective_keys.h>
#include <frame/host_fixture.h>

#include <algorithm>

namespace {

using melkar::EffectiveKey;

class EffectiveKeysTest : public HostTest {
protected:
    std::vector<EffectiveKey> Keys(std::string_view profile, const char* kind) {
        m_path = m_files.Write("conf/graph.cnf", profile);
        melkar::ProfileUse use;
        use.kind = kind;
        use.section = "OWN";
        return melkar::EffectiveKeys(m_path, use);
    }
    /// "[SECTION] value @line"; "-" if there is no such key.
    static std::string Told(const std::vector<EffectiveKey>& keys, const std::string& section, const char* name) {
        const auto found = std::ranges::find_if(
            keys, [&](const EffectiveKey& key) { return key.section == section && key.name == name; });
        return found == keys.end() ? "-" : "[" + section + "] " + found->value + " @" + std::to_string(found->line);
    }

    std::string m_path;
};

TEST_F(EffectiveKeysTest, HaveTheValuesThatCount) {
    constexpr std::string_view profile = "[COMMON]\nDATESIZE=\nCHARTMAX=7\n[own]\nBARSCOLOR_RGB=1, 2,3\nchartmax=14x\n"
                                         "CHARTMAX=9\nTITLELABEL=\" a \"\nIS_PRINTTARGET=3\nBARSCOLOR2_RGB=\n"
                                         "BARSCOLOR1_RGB=4,5,6\n[OWN]\nCHARTMIN=5\n";
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"a colour with blanks", "OWN", "BARSCOLOR_RGB", "[OWN] 1,2,3 @5"},
        {"the first of two, in another case, up to what is no digit", "OWN", "CHARTMAX", "[OWN] 14 @6"},
        {"quotes keep blanks", "OWN", "TITLELABEL", "[OWN]  a  @8"},
        {"a switch is on", "OWN", "IS_PRINTTARGET", "[OWN] 1 @9"},
        {"an empty colour is its default", "OWN", "BARSCOLOR2_RGB", "[OWN] 0,0,0 @10"},
        {"one of a counted row", "OWN", "BARSCOLOR1_RGB", "[OWN] 4,5,6 @11"},
        {"another that isn't there", "OWN", "BARSCOLOR9_RGB", "[OWN] 0,0,0 @0"},
        {"behind the last", "OWN", "BARSCOLOR10_RGB", "-"},
        {"a second section of the name isn't read", "OWN", "CHARTMIN", "[OWN] 0 @0"},
        {"an empty number is its default", "COMMON", "DATESIZE", "[COMMON] 12 @2"},
        {"no colour", "COMMON", "TEXTCOLOR_RGB", "[COMMON] none @0"},
        {"not read there", "COMMON", "CHARTMAX", "-"},
    };
    const std::vector<EffectiveKey> keys = Keys(profile, "bar");
    for (const auto& [why, section, name, expected] : cases)
        EXPECT_EQ(Told(keys, section, name), expected) << why;
    EXPECT_EQ(Told(Keys("[OWN]\nNOTE_LABEL1=a\n", "panel"), "OWN", "NOTE_LABEL2"), "[OWN]  @0") << "a list goes on";
    EXPECT_THAT(Keys(profile, "nonsense"), IsEmpty());
}

TEST_F(EffectiveKeysTest, AreChangedInAProfile) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"before the one that is there", "a=1\n[OWN]\nCHARTMAX=5\n", "8", "a=1\n[OWN]\nCHARTMAX=\"8\"\nCHARTMAX=5\n"},
        {"behind a last line without an end", "[own]", "8", "[own]\nCHARTMAX=\"8\"\n"},
        {"lines of another system, and a mark", "\xEF\xBB\xBF[X]\r\n[OWN]\r\n[OWN]\r\n", "8",
         "\xEF\xBB\xBF[X]\r\n[OWN]\r\nCHARTMAX=\"8\"\n[OWN]\r\n"},
        {"a section that isn't there", "[X]\n", "8", "[X]\n[OWN]\nCHARTMAX=\"8\"\n"},
    };
    for (const auto& [why, profile, value, expected] : cases) {
        Keys(profile, "bar");
        EffectiveKey key;
        key.section = "OWN";
        key.name = "CHARTMAX";
        EXPECT_EQ(melkar::ChangedProfile(m_path, key, value), expected) << why;
    }
    EffectiveKey label;
    label.section = "OWN";
    label.name = "TITLELABEL";
    const std::string text = melkar::ChangedProfile(m_path, label, "\" quoted\"");
    EXPECT_EQ(Told(Keys(text, "bar"), "OWN", "TITLELABEL"), "[OWN] \" quoted\" @3") << "quotes and blanks stay";
}

} // namespace
