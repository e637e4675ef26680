// The solver's entries.  The input's first line is the model's list of plug-ins;
// "-" for a model without one, and for none of the suite's products.  Each other
// line is a name, "|" and a class.

#include "support/checks.h"
#include "support/world.h"

#include <cstdlib>
#include <cstring>

void prepare()
{
    set("KLV_VEK_SEARCH", "yes");
    set("KLV_USER_PLUGIN_DIR", (home + ":" + home + "/none").c_str());
    put_file("vorn.cfg", "DATABASE vorn_shared shared.vek\nTABLE damper dampers.tbl dpr\n");
    put_file("plug.cfg", "DATABASE plug_shared plug.vek\nTABLE spring springs.tbl spr\n");
    put_file(".vorn.cfg", "DATABASE private private.vek\nENVIRONMENT A b\n");
    for (const char *name : {"a.dpr", "a.spr", "b.dpr"})
        put_file(name, "");
}

static void search(const std::string &name, const std::string &file_class)
{
    int found = 2;
    Given text(name);
    char *path = db_search(text, file_class.c_str(), &found);
    EXPECT(found == 0 || found == 1);
    if (!text.holds(path) && *checked(path).data() != '\0') {
        EXPECT(found == 1);
        free(path);
    }
}

static void search_for_fortran(const std::string &name, const std::string &file_class)
{
    int found = 2, length = -1;
    Given text(name), class_text(file_class);
    auto result = std::make_unique<char[]>(VEK_PATH_SIZE);
    F2C_DB_SEARCH(result.get(), 0, &length, &found, text, 0, class_text);
    EXPECT(found == 0 || found == 1);
    EXPECT(length >= 0 && checked(result.get()).size() == (size_t)length);
    text.expect_unchanged();
    class_text.expect_unchanged();
}

void run(std::string_view input)
{
    std::vector<std::string> lines = split(input, "\n");
    the_host.plugin_list = lines[0].substr(0, 65535).c_str();
    if (lines[0].starts_with("-")) {
        the_host.plugin_list = "";
        set("KLV_PRODUCT_NAME", lines[0].substr(1).c_str());
    }
    vek_set_product_name();
    if (input.size() % 2 == 0)
        EXPECT(F2C_VORN_VEK_CFG_ENV_READ() <= 1);
    for (size_t i = 1; i < lines.size(); ++i) {
        std::vector<std::string> texts = split(lines[i], "|");
        texts.resize(2);
        search(texts[0], texts[1]);
        search_for_fortran(texts[0], texts[1]);
    }
    printenvars();
    expect_sound_registries();
}
