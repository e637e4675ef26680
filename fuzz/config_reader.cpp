// A start from arbitrary configuration files.  The input holds the shared, the site
// and the private file, separated by lines "@@@"; the last two may be missing.

#include "records.h"
#include "support/checks.h"
#include "support/harness.h"

#include <filesystem>

static void read_again(const std::string &name, int cfg_index)
{
    int reported = the_host.errors;
    int result = vek_cfg_read(name.c_str(), cfg_index);
    EXPECT(0 <= result && result <= 6);
    EXPECT(result == 0 || the_host.errors > reported);
    check_invariants_registries();
}

void prepare()
{
    set_env("KLV_VEK_SEARCH", "yes");
    set_env("KLV_VORN_SITE", (home + "/site").c_str());
}

void run(std::string_view input)
{
    const char *const names[] = {"vorn.cfg", "site/vorn.cfg", ".vorn.cfg"};
    std::vector<std::string> files = split(input, "\n@@@\n");
    if (files.size() > 3)
        return;
    std::filesystem::create_directory("site");
    for (size_t i = 0; i < files.size(); ++i)
        write_file(names[i], files[i]);
    vek_set_product_name();
    int result = vorn_vek_init("vorn");
    EXPECT(-1 <= result && result <= 1);
    EXPECT(vek_cfg_count == (files.size() > 1 ? 3 : 2)); // all files are found
    EXPECT(result != 0 || (vorn_vek_get_number_of_veks() > 0 && vorn_vek_get_write_default()));
    check_invariants_registries();
    for (size_t i = 0; i < files.size(); ++i)
        read_again(names[i], (int)i + 1);
    for (size_t i = 0; i < files.size(); ++i)
        EXPECT(read_file(names[i]) == files[i] || i == 2);
}
