// The host's entry points that start a session, and the report of the environment.

#include "support/fixture.h"

class EnvironmentStart : public TempDirTest {
  protected:
    EnvironmentStart()
    {
        set_env("KLV_VORN", home + "/inst");
        set_env("KLV_VORN_SITE", "site");
        write_file(".vorn.cfg", private_cfg + "ENVIRONMENT WHERE private\n");
    }
    const std::string shared = home + "/inst/vorn.cfg", mine = home + "/.vorn.cfg";
};

static std::string print_call(const std::string &line)
{
    return "vc_str_print(" + line + ")\n";
}

static std::string processing(const std::string &path)
{
    return print_call("  Processing ENVIRONMENT entries in '" + path + "'");
}

static const std::string look_up =
    "ac_tavik_root()\nac_lookup_begin(70, 4)\nac_lookup_object(0)\nac_lookup_done()\n"
    "ac_lookup_by_name(71, 66, plugin_list)\nac_get_string(72, 518, 0)\n";

// Returns the recorded calls, one per line, and clears them.
static std::string drain_calls()
{
    std::string all;
    for (const std::string &call : host::calls)
        all += call + "\n";
    host::calls.clear();
    return all;
}

TEST_F(EnvironmentStart, ReadsTheEnvironmentOfTheProductFirst)
{
    write_file("inst/vorn.cfg", "DATABASE vorn_shared $BASE/s\nTABLE damper d.tbl dpr\n"
                                "ENVIRONMENT BASE .\nENVIRONMENT WHERE shared\n");
    write_file("site/vorn.cfg", "ENVIRONMENT WHERE site\n");
    write_file("plug.cfg", "ENVIRONMENT PLUG in$WHERE\nDATABASE plug $PLUG\n");
    EXPECT_EQ(vorn_vek_cfg_env_read(""), 0);
    EXPECT_EQ(vorn_vek_cfg_env_read("plug"), 0);
    EXPECT_EQ(drain_calls(),
              "vc_putenv(BASE, .)\nvc_putenv(WHERE, shared)\nvc_putenv(WHERE, site)\n"
              "vc_putenv(WHERE, private)\n" +
                  print_call(reading(shared)) + print_call(reading("site/vorn.cfg")) +
                  print_call(reading(mine)) + "vc_putenv(PLUG, inprivate)\n" +
                  print_call(reading("./plug.cfg")));
    EXPECT_EQ(vorn_vek_db2level("plug"), 3);
    // A variable that cannot be set is reported; the result is that of the start.
    for (const char *file : {"site/vorn.cfg", ".vorn.cfg"}) {
        write_file(file, "ENVIRONMENT WHERE fail\n");
        EXPECT_EQ(vorn_vek_cfg_env_read("vorn"), 0);
        EXPECT_EQ(host::printed()[1], "ERROR: Recommend exiting and checking configuration files.");
        write_file(file);
    }
    for (const Lines &bad : rows("none=configuration=file=error [39]=configuration=file=error "
                                 "[40]=plugin=name=too=long=(limit=<40=chars)")) {
        EXPECT_EQ(vorn_vek_cfg_env_read(bad[0].c_str()), -1);
        std::string line = bad[0].size() == 40 ? "ABORT:" : "ABORT: fatal";
        for (size_t word = 1; word < bad.size(); ++word)
            line += " " + bad[word];
        EXPECT_EQ(host::printed(), Lines{line});
    }
}

TEST_F(EnvironmentStart, ASolverRunReadsThePlugInsFromEachLocation)
{
    set_env("KLV_VORN_PRIVATE_DIR", "mine");
    set_env("KLV_USER_PLUGIN_DIR", ";" + repeat_x(300) + ";user;more");
    set_env("topdir", home + "/top/");
    set_env("KLV_OWN", "own"); // the variable of a plug-in is ignored in this pass
    write_file("inst/vorn.cfg", "ENVIRONMENT QNS_GY_STDSP_MAX 2\n");
    for (const char *file : {"own/own.cfg", "more/c.cfg"})
        write_file(file);
    std::string passes;
    // The plug-in, its file, and whether it is registered with the host.
    for (const Lines &row :
         rows("here=./here.cfg= a=mine/a/a.cfg= b=mine/b.cfg= c=user/c/c.cfg=registered "
              "d=more/d.cfg=registered e=site/e/e.cfg=registered none==registered own==registered "
              "f=site/f.cfg=registered "
              "g=top/g/g.cfg=registered a=mine/a/a.cfg=")) {
        const std::string file = row[0] == "g" ? home + "/" + row[1] : row[1];
        if (!row[2].empty())
            passes += "register_new_plugin_paths(" + row[0] + ")\n";
        if (file.empty())
            continue;
        write_file(file, "ENVIRONMENT F " + row[0] + "\n");
        passes += processing(file) + "vc_putenv(F, " + row[0] + ")\n";
    }
    host::plugin_list = "here:a::b:c:d:e:vorn:none:own:f:g:a:";
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    const std::string all = processing(shared) + "vc_putenv(QNS_GY_STDSP_MAX, 2)\n" +
                            processing(mine) + "vc_putenv(WHERE, private)\n" + look_up + passes;
    EXPECT_EQ(drain_calls(),
              print_call("") + all +
                  print_call("\n  OS-environment detected:  QNS_GY_STDSP_MAX=2") +
                  print_call("  Tavik/Gyrant will use -/+ <value> as new limits for steering rack "
                             "displacement (default = 1.0 m).") +
                  print_call(""));
    // A later call repeats everything but the solver mode and the report.
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    EXPECT_EQ(drain_calls(), all);
    write_file("mine/b.cfg", "ENVIRONMENT F fail\n");
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 1);
    host::plugin_list.reset();
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    EXPECT_EQ(host::calls.back(), "ac_lookup_done()");
    write_file("inst/vorn.cfg", "ENVIRONMENT F fail\n");
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 1);
}

// A solver searches for a file of the shared database: all calls from the first on.
TEST_F(EnvironmentStart, OneRequestOfASolver)
{
    write_file("inst/vorn.cfg", "ENVIRONMENT BASE " + home +
                                    "\nDATABASE vorn_shared $BASE/s.vek\n"
                                    "TABLE damper dampers.tbl dpr\n");
    write_file("plug.cfg", "ENVIRONMENT KLV_VORN_VARIANT \"x\"\nDATABASE plug plug.vek\n");
    write_file("s.vek/dampers.tbl/myfile.dpr");
    const std::string empty = on_windows ? " " : ""; // the empty string unsets it there
    set_env("PERPENDICULAR_ROAD_NORMAL", empty);
    set_env("QNS_3DSHELL_DBG", repeat_x(5000));
    host::plugin_list = "vorn:plug";
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    Buffer result("");
    int length = 0, found = 0;
    F2C_DB_SEARCH(result, 0, &length, &found, "<shared>/dampers.tbl/myfile.dpr   ", 0, "damper ");
    const std::string path = home + "/s.vek/dampers.tbl/myfile.dpr";
    EXPECT_EQ(std::string(result), path);
    EXPECT_EQ(length, static_cast<int>(path.size()));
    EXPECT_EQ(found, 1);
    EXPECT_EQ(listing("private.vek"), Lines{"dampers.tbl"});
    EXPECT_EQ(
        drain_calls(),
        print_call("") + processing(shared) + "vc_putenv(BASE, " + home + ")\n" + processing(mine) +
            "vc_putenv(WHERE, private)\n" + look_up + processing("./plug.cfg") +
            "vc_putenv(KLV_VORN_VARIANT, x)\n" +
            print_call("\n  OS-environment detected:  QNS_3DSHELL_DBG=" + repeat_x(5000)) +
            print_call("  Support for this environment variable has been discontinued; please use "
                       "QNS_3DSHELL_DEBUG instead.") +
            print_call("\n  OS-environment detected:  PERPENDICULAR_ROAD_NORMAL=" + empty) +
            print_call(
                "  Support for this environment variable has been discontinued; the triggered "
                "behavior has become the default.") +
            print_call("") + print_call("") + look_up + print_call(reading(shared)) +
            print_call(reading(mine)) + print_call(reading("./plug.cfg")) + print_call(""));
}

TEST_F(EnvironmentStart, ContinuesWhenTheHostChangesItsArgument)
{
    static Buffer name("vorn");
    host::when_print = [](const char *) { name[0] = 'x'; };
    write_file("inst/vorn.cfg", shared_cfg + "ENVIRONMENT\n");
    EXPECT_EQ(vorn_vek_cfg_env_read(name), 0);
    EXPECT_STREQ(name, "xorn");
    EXPECT_EQ(host::printed()[2], reading(shared));
}

// The product is known before the model's list is read and reported.
TEST_F(EnvironmentStart, TheProductComesBeforeTheListOfPlugIns)
{
    static std::string product;
    host::plugin_list = repeat_x(60000);
    host::when_print = [](const char *line) {
        if (*line == 'W')
            product = vek_product_name();
    };
    int found = 0;
    db_search(Buffer("x"), "", &found);
    EXPECT_EQ(product, "vorn");
}

TEST_F(EnvironmentStart, TheReportOfNothingIsEmpty)
{
    printenvars();
    EXPECT_EQ(host::calls, Lines{});
}
