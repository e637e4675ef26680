// Strings of any length, null pointers, and running out of memory.

#include "support/failing_malloc.h"
#include "support/fixture.h"

#include <cstdlib>
#include <cstring>

class Robustness : public TempDirTest {};

template <typename Result> static void check(Result result, const char *text)
{
    if constexpr (std::is_pointer_v<Result>) {
        ASSERT_NE(result, nullptr);
        EXPECT_TRUE(result == text || strlen(result) < VEK_TBL_PATH_SIZE);
    }
}

// Call each operation with a null pointer and with long and unusual strings.
template <typename Result, typename Argument>
static void call(std::initializer_list<Result (*)(Argument)> operations)
{
    std::vector<Lines> texts = rows(
        R"(= %s%n%s [266] [267] [268] [10000] $[5000] [266]$HOME/[300] <shared>/[259] <shared[5000]
        klvds://shared/[253] klvds://[5000] file://[5000] <private>/dampers.tbl/[245] x;;[5000])");
    for (const std::string &text :
         Lines{std::string(5000, '/'), std::string(5000, '\\'), "DATABASE d " + repeat_x(5000),
               "TABLE " + repeat_x(5000) + " d e", "DATABASE x\nTABLE y\n%n"})
        texts.push_back({text});
    for (Result (*operation)(Argument) : operations) {
        check(operation(nullptr), nullptr);
        for (const Lines &row : texts) {
            Buffer text(row[0]);
            check(operation(text), text);
        }
    }
}

static void call_all()
{
    call({vek_product_name_is, vek_file_exists, vorn_vek_init, vorn_vek_db_exists,
          vorn_vek_db_iswritable, vorn_vek_set_write_default, vek_set_write_db, vorn_vek_db2level,
          vorn_cre_dat, vorn_vek_tbl_info, vorn_vek_cfg_env_read});
    call({vorn_vek_delete_file, vek_backup_file});
    call({vorn_vek_get_def_propfile, vorn_vek_get_def_testrig});
    call({vek_eval_str, vek_rm_extra_separators, vorn_vek_nt2unix_path, vorn_vek_unix2nt_path});
    call({vorn_vek_class2ext, vorn_vek_class2tbl, vorn_vek_ext2class, vorn_vek_ext2tbl,
          vorn_vek_get_def_wri_tbl, vorn_vek_input2ext, vorn_vek_standardize_alias,
          _vek_getlongpath});
    call({vorn_vek_input2path, vorn_vek_input2file, vorn_vek_input2base, vek_input2tbl_and_file,
          vorn_vek_alias2path, vorn_vek_input2tblpth, vorn_vek_input2full, vorn_vek_expand2full,
          vorn_vek_path2alias});
    call<const char *, char *>({[](char *text) { return vek_ext2alias(text, 1); },
                                [](char *text) { return vorn_vek_ext2path(text, 1); },
                                [](char *text) { return vorn_vek_get_tbl_path(text, 1); },
                                [](char *text) { return vorn_vek_add_extension(text, text); }});
    call<int, char *>(
        {vek_env_read, [](char *text) { return vek_err(text, text); },
         [](char *text) { return vek_cfg_read(text, 0); },
         [](char *text) { return vek_db_read(text, 0); },
         [](char *text) { return vek_tbl_read(text, 0); },
         [](char *text) { return vek_propfile_read(text, 0) + vek_testrig_read(text, 0); },
         [](char *text) {
             return vorn_vek_set_def_propfile(text, text) + vorn_vek_set_def_testrig(text, text);
         },
         [](char *text) { return vorn_vek_copy_file2db(text, "private"); },
         [](char *text) {
             return vorn_vek_copy_file2file(text, text) + vorn_vek_rename_file(text, text) +
                    vorn_vek_append_file2file(text, text);
         },
         [](char *text) { return vek_tbl_add(0, text, text, text, 0), 0; },
         [](char *text) { return vek_strcasecmp(text, text) + vek_strncasecmp(text, text, 9); },
         [](char *text) -> int { return *vek_strrstr(text, text); },
         [](char *text) {
             Buffer shared(""), site(""), mine("");
             return vek_chk_cfg_files(text, shared, site, mine);
         },
         [](char *text) {
             char *block = vorn_vek_search_file(text, text, 1);
             return *block == '\0' ? 0 : (free(block), 1);
         },
         [](char *text) {
             Buffer result("");
             int length = 0, found = 0;
             F2C_DB_SEARCH(result, 0, &length, &found, text, 0, text);
             return found;
         }});
}

TEST_F(Robustness, NoStringBreaksAnOperation)
{
    call_all();
    start_session();
    vek_set_interface_mode();
    set_env("KLV_VEK_SEARCH", "yes");
    set_env("KLV_VEK_EXPAND_PATH", "yes");
    call_all();
    vek_set_number_of_veks(1000000);
    call_all();
}

TEST_F(Robustness, FilesReadWithoutMemoryKeepNoSlot)
{
    fail_allocation(1, true);
    for (int i = 0; i < 25; ++i)
        EXPECT_FALSE(cfg_index_assign("forgotten"));
    stop_failing();
    EXPECT_TRUE(cfg_index_assign("kept"));
    EXPECT_EQ(cfg_file_of(24) + std::string(cfg_file_of(25)), "kept");
}
