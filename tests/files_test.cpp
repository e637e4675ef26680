// Copying, deleting, renaming, backing up and appending files.

#include "support/fixture.h"

#include <filesystem>
#include <map>
#include <regex>
#include <sstream>

namespace fs = std::filesystem;

class Files : public TempDirTest {
  protected:
    Files()
    {
        add_database("db db");
        add_table("damper d.tbl dpr");
        vek_upd_vek_tbls(-1);
        write_file("a.dpr", "text");
    }
};

// The operations of a case, by their names in the table.
static const std::map<std::string, int (*)(char *, char *)> operations = {
    {"copy", vorn_vek_copy_file2file},
    {"copy_silent", vorn_vek_copy_file2file_silent},
    {"copy_to_db", [](char *path, char *name) { return vorn_vek_copy_file2db(path, name); }},
    {"delete", [](char *path, char *) { return vorn_vek_delete_file(path); }},
    {"delete_silent", [](char *path, char *) { return vorn_vek_delete_file_silent(path); }},
    {"rename", vorn_vek_rename_file},
    {"backup", [](char *path, char *) { return vek_backup_file(path); }},
    {"backup_silent", [](char *path, char *) { return vek_backup_file_silent(path); }},
    {"append", [](char *from, char *to) { return vorn_vek_append_file2file(from, to); }},
    {"write", [](char *path, char *text) { return write_file(path, text), 0; }},
    {"holds", [](char *path, char *text) { return read_file(path) == text ? 1 : 0; }},
    {"exists", [](char *path, char *) { return fs::exists(path) ? 1 : 0; }}};

TEST_F(Files, AreCopiedMovedAndDeleted)
{
    make_dir("dir");
    fs::create_hard_link("a.dpr", "other_name");
    make_pipe("pipe");
    write_file("own.x", "kept");
    fs::create_hard_link("own.x", "own.q");
    set_alarm(10); // kills a process that waits for a pipe
    for (const Case &row : cases("file_operations")) {
        if (on_windows && std::regex_search(row.head, std::regex("pipe|/dev/|a\\\\b|5000")))
            continue; // there are no pipes, "\\" is a separator, and the error message differs
        std::string result, operation, first, second;
        std::istringstream(expand_repeats(row.head)) >> result >> operation >> first >> second;
        EXPECT_EQ(operations.at(operation)(Buffer(first), Buffer(second)), std::stoi(result))
            << row.head;
        EXPECT_EQ(drain_output(), row.output) << row.head;
    }
    set_alarm(0);
}

TEST_F(Files, AreCopiedWholeWhateverTheirSize)
{
    for (size_t size : {0u, 1u, 511u, 512u, 513u, 1024u, 5000u, 70000u}) {
        std::string text(size, '\r');
        for (size_t i = 0; i < size; i += 7)
            text[i] = static_cast<char>(i / 251);
        write_file("from", text);
        EXPECT_EQ(vorn_vek_copy_file2file(Buffer("from"), Buffer("to")), 0);
        EXPECT_EQ(read_file("to"), text);
        EXPECT_EQ(host::printed().size(), 2u);
    }
}

TEST_F(Files, OfAnUnknownExtensionAreCopiedToTheRootDirectory)
{
    for (const Lines &row : rows(".none .dpr;[12]")) { // whether or not it is writable
        const std::string name = fs::path(home).filename().string() + row[0]; // unique
        write_file(name);
        vorn_vek_copy_file2db(Buffer(name), "db");
        const std::string line = host::printed().back();
        EXPECT_NE(line.find("'file:///" + name + "'"), line.npos) << line;
        fs::remove("/" + name);
    }
}

TEST_F(Files, AreNamedInTheLibrarysOwnBuffers)
{
    const auto own = [](const char *text) { return const_cast<char *>(text); };
    write_file("f.dpr");
    vorn_vek_rename_file(own(vorn_vek_input2file(Buffer("x/a.dpr"))), Buffer("db/d.tbl/b.dpr"));
    vorn_vek_copy_file2file(Buffer("f.dpr"), own(vorn_vek_input2file(Buffer("x/to"))));
    vorn_vek_copy_file2db(own(vorn_vek_input2base(Buffer("x/f.dpr.old"))), "db");
    EXPECT_EQ(drain_output(), "> File 'file://a.dpr' successfully renamed to\n"
                              ">      'klvds://db/d.tbl/b.dpr'.\n"
                              "> File 'file://f.dpr' successfully copied to\n>      'file://to'.\n"
                              "> File 'file://f.dpr' successfully copied to\n"
                              ">      'klvds://db/d.tbl/f.dpr'.\n");
    vorn_vek_set_def_propfile(vorn_vek_input2file(Buffer("x/damper")), Buffer("f.dpr"));
    EXPECT_STREQ(vorn_vek_get_def_propfile("damper"), "file://f.dpr");
    write_file("cfg", "PROPFILE damper f.dpr\nTABLE");
    vek_cfg_read(vorn_vek_input2file(Buffer("x/cfg")), 0);
    EXPECT_EQ(host::printed().back(), "ERROR: Erroneous statement(s) ignored in file : 'cfg'.");
}
