// Messages, and the string operations that everything else uses.

#include "support/failing_malloc.h"
#include "support/fixture.h"
#include "text/text.h"

class Message : public TempDirTest {};
class TextOperation : public TempDirTest {};

TEST_F(Message, IsPrintedWhateverTheSettingsAreAndRestoresThem)
{
    host::settings = {{0, 7}, {309, 11}, {310, 12}};
    EXPECT_EQ(vek_err("not shown", "two\nlines %s%n"), 0);
    const std::string defaults = "default_current_defaults()";
    EXPECT_EQ(host::calls,
              (Lines{"msg_get_gui_threshold()", defaults, "dbt_get_int(1, 309, 0)", defaults,
                     "dbt_get_int(2, 310, 0)", "msg_set_gui_threshold(0)", defaults,
                     "dbt_set_int(3, 309, 2, 0)", defaults, "dbt_set_int(4, 310, 2, 0)",
                     "vc_str_print(ERROR: two\nlines %s%n)", "msg_set_gui_threshold(7)", defaults,
                     "dbt_set_int(5, 309, 11, 0)", defaults, "dbt_set_int(6, 310, 12, 0)"}));
    host::printed();
    EXPECT_EQ(vek_warn("", ""), 0);
    vek_abort(nullptr, nullptr);
    vek_put_message(repeat_x(5000).c_str(), "TAG");
    EXPECT_EQ(host::printed(), (Lines{"WARNING: ", "ABORT: ", "TAG: " + repeat_x(5000)}));
    fail_allocation(1, false);
    vek_err("", "no memory for this");
    EXPECT_TRUE(stop_failing());
    EXPECT_EQ(host::calls, Lines{});
}

TEST_F(TextOperation, ComparesSearchesAndConvertsToUpperCase)
{
    // Compared whole and over two characters.
    for (const Lines &row : rows("Table=tABLE=0=0 ==0=0 a=B=-1=-1 abc=ab=67=0 a=ab=-66=-66 "
                                 "_=a=30=30 \xe4=a=163=163 abx=ABy=-1=0")) {
        Buffer first(row[0]), second(row[1]);
        EXPECT_EQ(row, (Lines{+first, +second, std::to_string(vek_strcasecmp(first, second)),
                              std::to_string(vek_strncasecmp(first, second, 2))}));
    }
    const auto last = [](const char *text, const char *part) {
        const char *found = vek_strrstr(text, part);
        return found == nullptr ? "none" : std::to_string(found - text);
    };
    check(last, "aa/b/c=4 /=0 none=none =none", "/");
    check(last, "aaa=1 Aa=none a=none", "aa");
    check(last, "abc=3 =0", "");
    // Strings that compare equal have the same hash.
    for (int i = 0; i < 256 * 256; ++i) {
        const char first[] = {'x', static_cast<char>(i >> 8), '\0'};
        const char second[] = {'X', static_cast<char>(i & 255), '\0'};
        const bool are_equal = toupper(i >> 8) == toupper(i & 255);
        ASSERT_EQ(vek_strcasecmp(first, second) == 0, are_equal) << i;
        ASSERT_TRUE(!are_equal || text_hash_nocase(first) == text_hash_nocase(second)) << i;
    }
    Buffer upper("");
    vek_str_copy_to_upper_case("azAZ\xe4_09`{", upper);
    vek_str_copy_to_upper_case("nowhere", nullptr);
    EXPECT_STREQ(upper, "AZAZ\xe4_09`{");
}

TEST_F(TextOperation, ExpandsVariables)
{
    for (const Lines &row : rows("HOME=/u/ A=q B=$A/z SELF=$SELF RING=$GNIR GNIR=$RING X264=[264] "
                                 "X265=[265] X266=[266] X267=[267]"))
        set_env(row[0], row[1]);
    set_env("Q", "A=b");          // the environment has "Q=A=b", which is not a variable Q=A
    for (int i = 0; i <= 64; ++i) // $N0 takes 64 replacements, $N64 one more
        set_env("N" + std::to_string(i), i == 63 ? "end" : "$N" + std::to_string((i + 1) % 65));
    for (const Lines &row : table("variables")) {
        Lines result = {row[0], vek_eval_str(Buffer(row[0]))};
        for (const std::string &line : host::printed())
            result.push_back(line);
        EXPECT_EQ(result, row);
    }
}

TEST_F(TextOperation, CleansUpAndConvertsSeparators)
{
    check(vek_rm_extra_separators, table("separators"));
    for (const auto &convert : {vorn_vek_nt2unix_path, vorn_vek_runtime_path_port})
        check(convert, "\\a\\b/=/a/b/");
    check(vorn_vek_unix2nt_path, "/a/b\\=\\a\\b\\");
    check(vorn_vek_nt2unix_path, {{"a\\b\nc\\d", "a/b\nc\\d"}, {"\n\\", "\n\\"}});
    check(_vek_getlongpath, "a~1/b=a~1/b");
    write_file("file");
    make_pipe("pipe");
    set_alarm(10); // kills a process that waits for a writer
    vek_file_exists("pipe");
    set_alarm(0);
    EXPECT_EQ(vek_file_exists("file"), 1);
    EXPECT_EQ(vek_file_exists("none") + vek_file_exists(".") + vek_file_exists(""), 0);
}
