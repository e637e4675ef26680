// What the library says of its build, and the names in its catalogue of variables.

#include "solver/environment_table.h"
#include "support/fixture.h"

#include <regex>

TEST(Build, IsIdentifiedBeforeAnyStart)
{
    testing::internal::CaptureStdout();
    const char *release = vek_build_version(), *version = vek_version();
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_NE(version, release);
    EXPECT_STREQ(version, release);
    const std::regex lines(
        R"(\n\nQNS C       opts: \(-.*\)\nQNS C\+\+     opts: \(-.*\)\nQNS Fortran opts: \(\)\n)"
        R"(QNS Utility  lib: vek\nQNS Compile   os: \S+ .+\nQNS Compile date: )"
        R"((\d{4})-(\d\d)-(\d\d) (\d\d):(\d\d):\d\d\nQNS Compile  ver: (\d{8}\.\d{4})\n)"
        R"(QNS Release  ver: (\d{4}\.\d+\.\d+-CL\d+)\n)");
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(text, parts, lines)) << text;
    EXPECT_EQ(parts.format("$1$2$3.$4$5"), parts[6]);
    EXPECT_EQ(parts[7], release);
}

// The digest (FNV-1a) is that of the names which users were promised, each with a newline.
TEST(EnvironmentTable, HasTheNamesInOrderAndASentenceForEach)
{
    uint32_t digest = 2166136261;
    for (short i = 0; i < vek_env_count; ++i) {
        for (const char character : std::string(vek_env_table[i].name) + "\n")
            digest = (digest ^ static_cast<unsigned char>(character)) * 16777619;
        const std::regex sentence("SKIP|[A-Z][\\w /.,;:()<>=%'+\n[\\]-]*\\.");
        EXPECT_TRUE(std::regex_match(vek_env_table[i].text, sentence)) << vek_env_table[i].text;
    }
    EXPECT_EQ(digest, 0x16408ab6u);
}
