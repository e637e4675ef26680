// The host's entry to a session, and the report of the environment.

#include "support/scratch.h"

class StartUp : public Scratch {
  protected:
    StartUp()
    {
        set("KLV_VORN", home + "/inst");
        set("KLV_VORN_SITE", "site");
        write_file(".vorn.cfg", private_cfg + "ENVIRONMENT WHERE private\n");
    }
};

static std::string processing(const std::string &path)
{
    return "vc_str_print(  Processing ENVIRONMENT entries in '" + path + "')\n";
}

// All calls, one a line; they are forgotten.
static std::string trace()
{
    std::string all;
    for (const std::string &call : host::calls)
        all += call + "\n";
    host::calls.clear();
    return all;
}

TEST_F(StartUp, ReadsTheEnvironmentOfTheProductFirst)
{
    write_file("inst/vorn.cfg", "DATABASE vorn_shared $BASE/s\nTABLE damper d.tbl dpr\n"
                                "ENVIRONMENT BASE " +
                                    home + "\nENVIRONMENT WHERE shared\n");
    write_file("site/vorn.cfg", "ENVIRONMENT WHERE site\n");
    write_file("plug.cfg", "ENVIRONMENT PLUG $WHERE/x\nDATABASE plug $PLUG\n");
    make_dir("private");
    EXPECT_EQ(vorn_vek_cfg_env_read(""), 0);
    EXPECT_EQ(host::calls_of("vc_putenv"),
              (Lines{"vc_putenv(BASE, " + home + ")", "vc_putenv(WHERE, shared)",
                     "vc_putenv(WHERE, site)", "vc_putenv(WHERE, private)"}));
    EXPECT_EQ(host::printed(), (Lines{reading(home + "/inst/vorn.cfg"), reading("site/vorn.cfg"),
                                      reading(home + "/.vorn.cfg")}));
    EXPECT_EQ(vorn_vek_cfg_env_read("plug"), 0);
    EXPECT_EQ(host::printed(), Lines{reading("./plug.cfg")});
    EXPECT_EQ(vorn_vek_db2level("plug"), 3);
    // A setting that fails is told of; the result is that of the start.
    write_file(".vorn.cfg", private_cfg + "ENVIRONMENT WHERE fail\n");
    EXPECT_EQ(vorn_vek_cfg_env_read("vorn"), 0);
    const Lines all = host::printed();
    EXPECT_EQ(Lines(all.begin(), all.begin() + 2),
              (Lines{"ERROR: vorn session will not be configured properly.",
                     "ERROR: Recommend exiting and checking configuration files."}));
    const std::string name(39, 'n');
    for (const char *missing : {"none", name.c_str()})
        EXPECT_EQ(vorn_vek_cfg_env_read(missing), -1);
    EXPECT_EQ(vorn_vek_cfg_env_read((name + "n").c_str()), -1);
    const std::string fatal = "ABORT: fatal configuration file error";
    EXPECT_EQ(host::printed(),
              (Lines{fatal, fatal, "ABORT: plugin name too long (limit <40 chars)"}));
}

TEST_F(StartUp, ASolverRunReadsThePlugInsFromEachPlace)
{
    set("KLV_VORN_PRIVATE_DIR", "mine");
    set("KLV_USER_PLUGIN_DIR", ";" + xs(300) + ";user;more");
    set("topdir", home + "/top/");
    set("KLV_OWN", "own"); // the variable of a plug-in does not count here
    write_file("inst/vorn.cfg", "ENVIRONMENT QNS_GY_STDSP_MAX 2\n");
    const Lines files = {"./here.cfg", "mine/a/a.cfg", "mine/b.cfg", "user/c/c.cfg",
                         "more/d.cfg", "site/e/e.cfg", "site/f.cfg", home + "/top/g/g.cfg"};
    for (const std::string &file : files)
        write_file(file, "ENVIRONMENT F_" + file.substr(file.size() - 5, 1) + " " + file + "\n");
    write_file("own/own.cfg", "ENVIRONMENT OWN x\n");
    write_file("more/c.cfg");
    host::plugin_list = "here:a::b:c:d:e:vorn:none:own:f:g:a:";
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    const std::string calls = trace();
    std::string expected = "vc_str_print()\n" + processing(home + "/inst/vorn.cfg") +
                           "vc_putenv(QNS_GY_STDSP_MAX, 2)\n" + processing(home + "/.vorn.cfg") +
                           "vc_putenv(WHERE, private)\n"
                           "ac_tavik_root()\nac_lookup_begin(70, 4)\nac_lookup_object(0)\n"
                           "ac_lookup_done()\nac_lookup_by_name(71, 66, plugin_list)\n"
                           "ac_get_string(72, 518, 0)\n";
    const auto pass = [&](const std::string &plugin, int file, bool is_registered) {
        if (is_registered)
            expected += "register_new_plugin_paths(" + plugin + ")\n";
        if (file >= 0)
            expected += processing(files[static_cast<size_t>(file)]) + "vc_putenv(F_" +
                        plugin.substr(0, 1) + ", " + files[static_cast<size_t>(file)] + ")\n";
    };
    pass("e", -1, false);
    expected += processing("./here.cfg") + "vc_putenv(F_e, ./here.cfg)\n";
    pass("a", 1, false);
    pass("b", 2, false);
    pass("c", 3, true);
    pass("d", 4, true);
    pass("e", 5, true);
    pass("none", -1, true);
    pass("own", -1, true);
    pass("f", 6, true);
    pass("g", 7, true);
    pass("a", 1, false);
    const std::string report =
        "vc_str_print(\n  OS-environment detected:  QNS_GY_STDSP_MAX=2)\n"
        "vc_str_print(  Tavik/Gyrant will use -/+ <value> as new limits for steering rack "
        "displacement (default = 1.0 m).)\nvc_str_print()\n";
    EXPECT_EQ(calls, expected + report);
    EXPECT_EQ(vek_solver_mode(), 1);
    // A later call repeats all but the mode and the report.
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    EXPECT_EQ(trace(), expected.substr(expected.find('\n') + 1));
    write_file("mine/b.cfg", "ENVIRONMENT F_b fail\n");
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 1);
    trace();
    host::plugin_list.reset();
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    EXPECT_TRUE(trace().ends_with("ac_lookup_object(0)\nac_lookup_done()\n"));
}

// A solver asks for a file of the shared database, from its first call on.
TEST_F(StartUp, TheRoadOfOneRequest)
{
    const std::string shared = home + "/inst/vorn.cfg", mine = home + "/.vorn.cfg";
    write_file("inst/vorn.cfg", "ENVIRONMENT BASE " + home +
                                    "\n"
                                    "DATABASE vorn_shared $BASE/s.vek\n"
                                    "TABLE damper dampers.tbl dpr\n");
    write_file("plug.cfg", "ENVIRONMENT KLV_VEK_SEARCH \"yes\"\nDATABASE plug plug.vek\n");
    write_file("s.vek/dampers.tbl/myfile.dpr");
    host::plugin_list = "vorn:plug";
    EXPECT_EQ(F2C_VORN_VEK_CFG_ENV_READ(), 0);
    Text result("");
    int length = 0, found = 0;
    F2C_DB_SEARCH(result, 0, &length, &found, "<shared>/dampers.tbl/myfile.dpr   ", 0, "damper ");
    const std::string path = home + "/s.vek/dampers.tbl/myfile.dpr";
    EXPECT_EQ(std::string(result), path);
    EXPECT_EQ(length, static_cast<int>(path.size()));
    EXPECT_EQ(found, 1);
    EXPECT_EQ(listing("private.vek"), Lines{"dampers.tbl"});
    const std::string look_up =
        "ac_tavik_root()\nac_lookup_begin(70, 4)\nac_lookup_object(0)\nac_lookup_done()\n"
        "ac_lookup_by_name(71, 66, plugin_list)\nac_get_string(72, 518, 0)\n";
    const std::string print = "vc_str_print(";
    EXPECT_EQ(trace(),
              "vc_str_print()\n" + processing(shared) + "vc_putenv(BASE, " + home + ")\n" +
                  processing(mine) + "vc_putenv(WHERE, private)\n" + look_up +
                  processing("./plug.cfg") + "vc_putenv(KLV_VEK_SEARCH, yes)\n" + print +
                  "\n  OS-environment detected:  KLV_VEK_SEARCH=yes)\n" + print +
                  "  Tavik/Vorn will restore the vek search algorithm from version 12.0 (if set to "
                  "'yes').\n  Usage of this environment variable is strongly discouraged.)\n"
                  "vc_str_print()\nvc_str_print()\n" +
                  look_up + print + reading(shared) + ")\n" + print + reading(mine) + ")\n" +
                  print + reading("./plug.cfg") + ")\nvc_str_print()\n");
}

TEST_F(StartUp, TheReportTellsWhatIsSet)
{
    printenvars();
    EXPECT_EQ(host::printed(), Lines{});
    set("KLV_VORN_VARIANT", "x");
    set("KLV_REQENV_SHOW", "x");
    set("PERPENDICULAR_ROAD_NORMAL", "");
    set("QNS_3DSHELL_DBG", xs(5000));
    printenvars();
    EXPECT_EQ(host::printed(),
              (Lines{"\n  OS-environment detected:  QNS_3DSHELL_DBG=" + xs(5000),
                     "  Support for this environment variable has been discontinued; please use "
                     "QNS_3DSHELL_DEBUG instead.",
                     "\n  OS-environment detected:  PERPENDICULAR_ROAD_NORMAL=",
                     "  Support for this environment variable has been discontinued; the triggered "
                     "behavior has become the default.",
                     ""}));
}
