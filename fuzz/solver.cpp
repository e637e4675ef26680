// The solver's entry points.  The input's first line is the model's list of
// plug-ins.  "-NAME" stands for a model without the list, and sets KLV_PRODUCT_NAME
// to NAME.  Each other line is a name, "|" and a class.

#include "support/checks.h"
#include "support/harness.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>

void prepare()
{
    set_env("KLV_VEK_SEARCH", "yes");
    set_env("KLV_USER_PLUGIN_DIR", (home + "/none;" + home + "/plugins").c_str());
    write_file("vorn.cfg", "DATABASE vorn_shared shared.vek\nTABLE damper dampers.tbl dpr\n");
    std::filesystem::create_directory("plugins");
    write_file("plugins/plug.cfg", "DATABASE plug_shared plug.vek\nTABLE spring springs.tbl spr\n");
    write_file(".vorn.cfg", "DATABASE private private.vek\nENVIRONMENT A b\n");
    for (const char *name : {"a.dpr", "a.spr", "b.dpr"})
        write_file(name, "");
    EXPECT(vek_chk_cfg_files("plug", nullptr, nullptr, nullptr) == 0);
}

static void search(const std::string &name, const std::string &file_class)
{
    int found = 2;
    CallerString string(name);
    char *path = db_search(string, file_class.c_str(), &found);
    EXPECT(found == 0 || found == 1);
    if (!string.holds(path) && *checked(path).data() != '\0') {
        EXPECT(found == 1);
        free(path);
    }
}

static void search_for_fortran(const std::string &name, const std::string &file_class)
{
    int found = 2, length = -1;
    CallerString string(name), class_string(file_class);
    auto result = std::make_unique<char[]>(VEK_PATH_SIZE);
    F2C_DB_SEARCH(result.get(), 0, &length, &found, string, 0, class_string);
    EXPECT(found == 0 || found == 1);
    EXPECT(length >= 0 && checked(result.get()).size() == (size_t)length);
    string.expect_unchanged();
    class_string.expect_unchanged();
}

void run(std::string_view input)
{
    std::vector<std::string> lines = split(input, "\n");
    the_host.plugin_list = lines[0].substr(0, 65535).c_str();
    if (lines[0].starts_with("-")) {
        the_host.plugin_list = "";
        set_env("KLV_PRODUCT_NAME", lines[0].substr(1).c_str());
    }
    vek_set_product_name();
    if (input.size() % 2 == 0)
        EXPECT(F2C_VORN_VEK_CFG_ENV_READ() <= 1);
    for (size_t i = 1; i < lines.size(); ++i) {
        std::vector<std::string> fields = split(lines[i], "|");
        fields.resize(2);
        search(fields[0], fields[1]);
        search_for_fortran(fields[0], fields[1]);
    }
    printenvars();
    check_invariants_registries();
}
