// Reading the ENVIRONMENT statements of an arbitrary file: on its own, and in the
// starts of a product and of a solver run.

#include "support/checks.h"
#include "support/harness.h"

void prepare()
{
}

void run(std::string_view input)
{
    write_file("a.cfg", input);
    CallerString path("$HOME/a.cfg", VEK_PATH_SIZE);
    int result = vek_env_read(path);
    EXPECT(result == 0 || result == 1);
    EXPECT(std::string_view(path) == home + "/a.cfg");

    for (const char *name : {"vorn", "f2c_vorn_vek_cfg_env_read"}) {
        begin_process();
        write_file("vorn.cfg", input);
        result = vorn_vek_cfg_env_read(name);
        EXPECT(-1 <= result && result <= 1);
        check_invariants_registries();
    }
    EXPECT(read_file("a.cfg") == input);
}
