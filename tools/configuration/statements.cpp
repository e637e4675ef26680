// What each statement needs, and what it does.

#include "statements.h"
#include "vek.h"

#include <unistd.h>

static location place_in(const statement &it, size_t index)
{
    location where = it.where;
    where.column += (int)(index < it.words.size() ? it.words[index].start : it.end);
    return where;
}

static string kind_of(const vector<word> &words);

bool fault_at(const statement &it, size_t word_index, const char *code, const string &text,
              severity level)
{
    if (level == ERROR && it.words.size() > 1)
        it.all.rejected.push_back({it.words[1].text, kind_of(it.words), it.where});
    it.all.diagnostics.push_back({place_in(it, word_index), level, code, text});
    return false;
}

severity unless_rejected(const configuration &all, const string &name, const string &kind)
{
    const bool is_rejected = std::ranges::any_of(all.rejected, [&](const entry &it) {
        return equal_nocase(it.name, name) && is_in(kind, it.value);
    });
    return is_rejected || !all.is_whole ? CONSEQUENCE : ERROR;
}

static const string &operand(const statement &it, size_t index)
{
    return it.words[index].text;
}

static entry entry_of(const statement &it, const string &value)
{
    return {operand(it, 1), value, place_in(it, 1)};
}

static string defined_name(const configuration &all, const string &name)
{
    return name == "shared" && all.product != "dunmoren" ? all.product + "_shared" : name;
}

static bool report_unknown_database(const statement &it, size_t index, const string &name)
{
    return fault_at(it, index, "unknown-database",
                    "no database '" + name + "' is defined before" +
                        did_you_mean(name, names_of(it.all.databases)),
                    unless_rejected(it.all, defined_name(it.all, name), "database"));
}

static string normalized(const statement &it, string path)
{
    path = expand(it, vorn_vek_nt2unix_path(path.data()));
    return vek_rm_extra_separators(vorn_vek_nt2unix_path(path.data()));
}

// A missing directory is created, but not those above it.
static bool is_or_becomes_directory(const statement &it, const fs::path &path)
{
    std::error_code error;
    const string parent = path.has_parent_path() ? path.parent_path().string() : ".";
    return fs::is_directory(path, error) || find_entry(it.all.databases, parent, &entry::value) ||
           (access(path.string().c_str(), F_OK) != 0 && access(parent.c_str(), W_OK) == 0);
}

static void apply_database(const statement &it)
{
    const string &name = operand(it, 1);
    const entry *known = find_entry(it.all.databases, name);
    string path = it.text.substr(it.words[2].start, it.end - it.words[2].start);
    path = normalized(it, path.substr(0, path.find_last_not_of(" \t") + 1));
    if (path.empty()) // after a report
        it.all.rejected.push_back({name, "database", it.where});
    else if (!is_or_becomes_directory(it, path))
        fault_at(it, 2, "no-directory", "'" + path + "' cannot be created");
    else if (known)
        fault_at(it, 1, "duplicate-database", place_of(known) + " defines it already");
    else if (name == "shared" && it.role == CFG_PRIVATE)
        fault_at(it, 1, "reserved-name", "'shared' stands for the product's database");
    else if (fs::path(path).is_absolute() ||
             !fault_at(it, 2, "relative-path", "the path is relative", WARNING))
        it.all.databases.push_back(entry_of(it, path));
}

static void apply_write_default(const statement &it)
{
    const entry *database = find_entry(it.all.databases, operand(it, 1));
    const string path = database ? database->value : "";
    if (!database)
        report_unknown_database(it, 1, operand(it, 1));
    else if (access(path.c_str(), F_OK) == 0 && access(path.c_str(), W_OK) != 0)
        fault_at(it, 1, "not-writable", "'" + path + "' cannot be written");
    else
        it.all.write_default = entry_of(it, operand(it, 1));
}

static void apply_old_database(const statement &it)
{
    fault_at(it, 0, "discontinued", "use DATABASE instead", WARNING);
    apply_database(it);
    if (equal_nocase(operand(it, 0), "PRIVATE_DB") && it.all.write_default.value.empty())
        apply_write_default(it);
}

// The databases are moved to the front, the last one first.  A name follows a comma.
static void apply_order(const statement &it)
{
    vector<entry> &list = it.all.databases;
    const char *setting = variable_value(it.all, "KLV_VEK_SEARCH");
    const bool has_effect = setting && strcmp(setting, "yes") == 0;
    for (size_t i = has_effect ? it.words.size() - 1 : 0; i > 0; --i) {
        const strings names = split(operand(it, i), ",");
        const bool is_new = i == 1 || operand(it, i)[0] == ',' || operand(it, i - 1).ends_with(',');
        for (size_t j = names.size(); j-- > (is_new ? 0 : 1);) {
            const entry *own = find_entry(list, names[j]);
            const entry *known = own ? own : find_entry(list, defined_name(it.all, names[j]));
            const auto place = list.begin() + (known ? known - list.data() : 0);
            if (known)
                std::rotate(list.begin(), place, place + 1);
            else
                report_unknown_database(it, i, names[j]);
        }
    }
}

static void apply_table(const statement &it)
{
    const string &extension = operand(it, 3);
    const entry *same_class = find_entry(it.all.tables, operand(it, 1));
    const entry *known =
        same_class ? same_class : find_entry(it.all.tables, extension, &entry::extension);
    if (extension.find('.') != string::npos)
        fault_at(it, 3, "dot-in-extension", "an extension has no dot", WARNING);
    if (it.all.databases.empty() && it.all.is_whole)
        fault_at(it, 0, "table-before-database", "no DATABASE precedes this TABLE",
                 it.all.rejected.empty() ? ERROR : CONSEQUENCE);
    else if (known)
        fault_at(it, same_class ? 1 : 3, "duplicate-table",
                 "ignored: " + place_of(known) + " defines it already",
                 it.role == CFG_PRIVATE ? ERROR : WARNING);
    else
        it.all.tables.push_back({operand(it, 1), operand(it, 2), it.where, extension});
}

static void set_default(vector<entry> &list, const entry &chosen)
{
    std::erase_if(list, [&](const entry &known) { return known.name == chosen.name; });
    list.push_back(chosen);
}

// The library drops a directory that is none of a table.  Returns empty after a report.
static string path_of_name(const statement &it, const string &name)
{
    const auto [is_valid, database, rest, directory, file] = split_name(name);
    if (!is_valid)
        return name.starts_with("file://") ? name.substr(strlen("file://")) : name;
    const entry *known = find_entry(it.all.databases, defined_name(it.all, database));
    if (!known && !report_unknown_database(it, 2, database))
        return {};
    const entry *table = find_entry(it.all.tables, directory, &entry::value);
    return known->value + (!it.all.is_whole ? rest : table ? "/" + table->value + file : file);
}

static void apply_propfile(const statement &it)
{
    const string name = normalized(it, operand(it, 2));
    const string path = name.empty() ? "" : path_of_name(it, name);
    if (vek_file_exists(path.c_str()))
        set_default(it.all.propfiles, entry_of(it, name));
    else if (!path.empty())
        fault_at(it, 2, "no-file", "'" + path + "' does not open: " + strerror(errno));
}

static void apply_testrig(const statement &it)
{
    set_default(it.all.testrigs, entry_of(it, operand(it, 2)));
}

struct statement_form {
    const char *keyword, *kind; // of what it defines
    size_t count;               // of operands
    const char *operands[3];
    size_t longest[3]; // 0: no limit
    bool takes_rest;   // the last operand is the rest of the line
    void (*apply)(const statement &it);
};

static const statement_form forms[] = {
    {"DATABASE", "database", 2, {"name", "path"}, {30}, true, apply_database},
    {"SHARED_DB", "database", 2, {"name", "path"}, {30}, true, apply_old_database},
    {"PRIVATE_DB", "database", 2, {"name", "path"}, {30}, true, apply_old_database},
    {"TABLE", "table", 3, {"class", "directory", "extension"}, {30, 35, 15}, false, apply_table},
    {"DEFAULT_WRITE_DB", "", 1, {"name"}, {30}, false, apply_write_default},
    {"PROPFILE", "", 2, {"class", "file"}, {30}, false, apply_propfile},
    {"TESTRIG", "", 2, {"class", "name"}, {30}, false, apply_testrig},
    {"DATABASE_ORDER", "", 1, {"names"}, {0}, true, apply_order},
    {"ENVIRONMENT", "variable", 2, {"name", "value"}, {60}, true, apply_environment},
};

static const statement_form *form_of(const vector<word> &words)
{
    for (const statement_form &form : forms)
        if (!words.empty() && equal_nocase(form.keyword, words[0].text))
            return &form;
    return nullptr;
}

// What a statement would define, which can be anything if its keyword is misspelt.
static string kind_of(const vector<word> &words)
{
    return form_of(words) ? form_of(words)->kind : "database table variable";
}

// Returns whether a reader accepts the number of words and their lengths.
static bool check_operands(const statement &it, const statement_form &form)
{
    const string keyword = form.keyword;
    const size_t given = it.words.size() - 1;
    if (given < form.count)
        return fault_at(it, given + 1, "missing-word",
                        keyword + " without its " + form.operands[given]);
    for (size_t i = 0; i < form.count; ++i)
        if (form.longest[i] > 0 && operand(it, i + 1).size() > form.longest[i])
            return fault_at(it, i + 1, "too-long",
                            "more than " + std::to_string(form.longest[i]) + " characters");
    if (given > form.count && !form.takes_rest)
        fault_at(it, form.count + 1, "extra-words", "ignored, as " + keyword + " ends before",
                 WARNING);
    return true;
}

// A "!" directly after a word or between quotes is more likely meant as a part of the value.
static void check_comment(const statement &it)
{
    const string &line = it.text, &word = it.words.back().text;
    const size_t mark = std::min(line.find('!'), line.size());
    const bool is_quoted = std::count(line.begin(), line.begin() + (long)mark, '"') % 2 == 1;
    if (mark < line.size() && it.words.size() > 1 &&
        (is_quoted || !isspace((unsigned char)line[mark - 1])))
        fault_at(it, it.words.size() - 1, "comment-in-value",
                 "\"!\" begins a comment after '" + word + "'", WARNING);
}

static void apply_statement(const statement &it, const statement_form *form)
{
    const string line = it.text.substr(0, it.end), &keyword = operand(it, 0);
    strings keywords;
    std::ranges::transform(forms, std::back_inserter(keywords), &statement_form::keyword);
    check_comment(it);
    if (line.find("\xC2\xA0") != string::npos)
        fault_at(it, 0, "no-break-space", "a no-break space here separates no words");
    else if (!form)
        fault_at(it, 0, "unknown-keyword",
                 "unknown keyword '" + keyword + "'" + did_you_mean(keyword, keywords));
    else if (check_operands(it, *form))
        form->apply(it);
}

// The library takes a byte order mark for a part of the first word.
static bool has_byte_fault(const statement &it)
{
    const bool has_mark = it.where.cfg_line == 1 && it.text.starts_with("\xEF\xBB\xBF");
    const bool has_nul = it.text.find('\0') != string::npos;
    if (has_mark)
        fault_at(it, 0, "byte-order-mark", "the line is ignored, as a byte order mark precedes it",
                 it.words.size() > 1 || it.words[0].text.size() > 3 ? ERROR : WARNING);
    if (has_nul)
        fault_at(it, it.words.size(), "nul-byte", "ignored from a NUL byte on",
                 form_of(it.words) ? WARNING : ERROR);
    return has_mark || has_nul;
}

void read_statement(const statement &it, bool is_environment)
{
    const statement_form *form = form_of(it.words);
    const bool is_own = form && (form->apply == apply_environment) == is_environment;
    const bool is_tail = it.where.column > 1, is_ignored = !is_environment && has_byte_fault(it);
    const bool is_unknown = !form && !it.words.empty() && !is_environment && !is_tail;
    if (is_own && is_tail)
        fault_at(it, 0, "long-line", "the line is so long that a statement begins here", WARNING);
    if (is_own || (is_unknown && !is_ignored))
        apply_statement(it, form);
}
