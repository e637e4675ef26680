// Windows only: short names, which differ between file systems.

#include "support/fixture.h"

#include <windows.h>

TEST_F(TempDirTest, ShortNamesAreReturnedInTheirLongForm)
{
    const std::string name = "/a long directory.vek";
    char path[VEK_PATH_SIZE] = "";
    make_dir(home + name);
    GetShortPathNameA((home + name).c_str(), path, sizeof path);
    if (std::string(path).find('~') == std::string::npos)
        GTEST_SKIP() << "this file system has no short names";
    EXPECT_TRUE(std::string(_vek_getlongpath(path)).ends_with(name));
    EXPECT_EQ(add_database("a " + std::string(path)), 0);
    EXPECT_TRUE(std::string(vek_list[0]->path).ends_with(name));
}
