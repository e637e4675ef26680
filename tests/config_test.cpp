// Strings of a host that change while the library uses them.

#include "support/fixture.h"

class ConfigurationFiles : public TempDirTest {};

TEST_F(ConfigurationFiles, MayBeNamedByStringsThatChangeDuringTheCall)
{
    static Buffer name("vorn");
    host::when_print = [](const char *) { name[0] = 'x'; };
    set_env("KLV_VORN", ".");
    write_file("vorn.cfg", "ENVIRONMENT A\n");
    vorn_vek_cfg_env_read(name);
    EXPECT_EQ(host::printed().at(2), reading("./vorn.cfg"));
    write_file("dir/t.cfg", "PROPFILE a none\n");
    vek_cfg_read(vorn_vek_input2full(Buffer("dir/t.cfg")), 0); // as does the statement
    EXPECT_EQ(host::printed().back(),
              "ERROR: Erroneous statement(s) ignored in file : 'dir/t.cfg'.");
}
