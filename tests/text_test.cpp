// Messages, and the text operations that everything else leans on.

#include "support/failing_malloc.h"
#include "support/scratch.h"

#include <sys/stat.h>
#include <unistd.h>

class Message : public Scratch {};
class TextOperation : public Scratch {};

TEST_F(Message, GoesOutWhateverTheSettingsAreAndPutsThemBack)
{
    host::settings = {{0, 7}, {309, 11}, {310, 12}};
    EXPECT_EQ(vek_err("not shown", "two\nlines %s%n"), 0);
    const std::string ask = "default_current_defaults()";
    EXPECT_EQ(host::calls,
              (Lines{"msg_get_gui_threshold()", ask, "dbt_get_int(1, 309, 0)", ask,
                     "dbt_get_int(2, 310, 0)", "msg_set_gui_threshold(0)", ask,
                     "dbt_set_int(3, 309, 2, 0)", ask, "dbt_set_int(4, 310, 2, 0)",
                     "vc_str_print(ERROR: two\nlines %s%n)", "msg_set_gui_threshold(7)", ask,
                     "dbt_set_int(5, 309, 11, 0)", ask, "dbt_set_int(6, 310, 12, 0)"}));
    host::printed();
    EXPECT_EQ(vek_warn("", ""), 0);
    vek_abort(nullptr, nullptr);
    vek_put_message(xs(5000).c_str(), "TAG");
    EXPECT_EQ(host::printed(), (Lines{"WARNING: ", "ABORT: ", "TAG: " + xs(5000)}));
    fail_allocation(1, false);
    vek_err("", "no memory for this");
    EXPECT_TRUE(stop_failing());
    EXPECT_EQ(host::calls, Lines{});
}

TEST_F(TextOperation, ComparesFindsAndRaises)
{
    // Compared whole and over two characters.
    for (const Lines &row : rows("Table=tABLE=0=0 ==0=0 a=B=-1=-1 abc=ab=67=0 a=ab=-66=-66 "
                                 "_=a=30=30 \xe4=a=163=163 abx=ABy=-1=0")) {
        const char *first = row[0].c_str(), *second = row[1].c_str();
        EXPECT_EQ(vek_strcasecmp(first, second), std::stoi(row[2])) << first << " " << second;
        EXPECT_EQ(vek_strncasecmp(first, second, 2), std::stoi(row[3])) << first << " " << second;
    }
    const auto last = [](const char *text, const char *part) {
        const char *found = vek_strrstr(text, part);
        return found == nullptr ? "none" : std::to_string(found - text);
    };
    check(last, "aa/b/c=4 /=0 none=none =none", "/");
    check(last, "aaa=1 Aa=none a=none", "aa");
    check(last, "abc=3 =0", "");
    Text upper("");
    vek_str_copy_to_upper_case("azAZ\xe4_09", upper);
    EXPECT_STREQ(upper, "AZAZ\xe4_09");
}

TEST_F(TextOperation, ExpandsVariables)
{
    for (const Lines &row :
         rows("HOME=/u/ A=q B=$A/z SELF=$SELF X264=[264] X265=[265] X266=[266] X267=[267]"))
        set(row[0], row[1]);
    for (int i = 0; i <= 64; ++i) // $N0 takes 64 replacements, $N64 one more
        set("N" + std::to_string(i), i == 63 ? "end" : "$N" + std::to_string((i + 1) % 65));
    check(vek_eval_str, "a//b/=a//b/ $HOME/x=/u/x $HOME/=/u x//$A//y/=x/q/y p$B/$A=pq/z/q $N0=end "
                        "$X266=[266] p$X265=p[265] $X264/y=[264]/y $X265/=[265]");
    EXPECT_EQ(host::printed(), Lines{});
    set("Q", "A=b"); // the environment holds "Q=A=b", which is no variable Q=A
    EXPECT_STREQ(vek_eval_str(Text("$Q=A")), "");
    EXPECT_EQ(host::printed()[1], "WARNING:   $Q=A");
    for (const Lines &row :
         rows("$X267=X267 p$X266=X266 $X265/y=X265 $X266/=X266 $N64=N63 $SELF=SELF "
              "a/$NONE/b=NONE ${A}={A} $A$A=A$A a$=")) {
        Text text(row[0]);
        EXPECT_STREQ(vek_eval_str(text), "") << row[0];
        EXPECT_EQ(
            host::printed(),
            (Lines{getenv(row[1].c_str()) != nullptr
                       ? "WARNING: Expanding the following variable in the runtime environment "
                         "causes a 'line-too-long' error:"
                       : "WARNING: The following variable could not be found in the runtime "
                         "environment:",
                   "WARNING:   $" + row[1]}));
    }
}

TEST_F(TextOperation, CleansAndTurnsSeparators)
{
    check(
        vek_rm_extra_separators,
        "a//b/=a/b /usr/lib/=/usr/lib c:/=c: ab=ab /=/ = //srv/x=//srv/x ///x=//x ////=/ "
        "klvds://db//t=klvds://db/t klvds://=klvds:// KLVDS://db=KLVDS:/db file://a//b=file://a/b "
        "file:////c:/x/=file:////c:/x a\\\\b\\=a\\\\b\\ [5000]//y/=[5000]/y");
    for (const auto &turn : {vorn_vek_nt2unix_path, vorn_vek_runtime_path_port})
        check(turn, "\\a\\b/=/a/b/");
    check(vorn_vek_unix2nt_path, "/a/b\\=\\a\\b\\");
    EXPECT_STREQ(vorn_vek_nt2unix_path(Text("a\\b\nc\\d")), "a/b\nc\\d");
    EXPECT_STREQ(vorn_vek_nt2unix_path(Text("\n\\")), "\n\\");
    check(_vek_getlongpath, "a~1/b=a~1/b");
    write_file("file");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    alarm(10); // ends a process that waits for somebody to write
    vek_file_exists("pipe");
    alarm(0);
    EXPECT_EQ(vek_file_exists("file"), 1);
    EXPECT_EQ(vek_file_exists("none") + vek_file_exists(".") + vek_file_exists(""), 0);
}
