// The ENVIRONMENT pass over an arbitrary file: alone, and in the starts of a
// product and of a solver run.

#include "support/checks.h"
#include "support/world.h"

void prepare()
{
}

void run(std::string_view input)
{
    put_file("a.cfg", input);
    Given path("$HOME/a.cfg", VEK_PATH_SIZE);
    int result = vek_env_read(path);
    EXPECT(result == 0 || result == 1);
    EXPECT(std::string_view(path) == home + "/a.cfg");

    for (const char *name : {"vorn", "f2c_vorn_vek_cfg_env_read"}) {
        begin_process();
        put_file("vorn.cfg", input);
        result = vorn_vek_cfg_env_read(name);
        EXPECT(-1 <= result && result <= 1);
        expect_sound_registries();
    }
    EXPECT(get_file("a.cfg") == input);
}
