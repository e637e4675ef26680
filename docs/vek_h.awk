# Converts the plain comments of include/vek.h and include/hsk.h to comments that Doxygen
# takes.  Each header is a manual to be read as text, so it carries no markup:
#
#   /* ---- Title ---- ...    becomes a group, which lasts to the next one
#   a comment before VEK_API  (HSK_CORE in hsk.h) becomes the entry of each declaration below it
#   a comment after a #define becomes its entry
#   the first comment         becomes a group of its own, the rules for all
#   all other comments        are left as they are
#
# An entry is a summary, prose, and then sections.  A section's label takes the
# first 12 columns of a line:
#
#   Parameters  name  text     becomes @param, where the declaration has the name
#   Returns     text, or rows  becomes @return, or a @retval for each "code  text"
#   Prints, Overwrites, Lifetime, Called, Minimum  become paragraphs under that title
#
# The names of operations become links.

BEGIN {
    while ((getline name < "src/exports.txt") > 0)
        if (name !~ /^#/)
            is_operation[name] = 1
    while ((getline name < "include/hsk.h") > 0)
        if (name ~ /^HSK_CORE /)
            is_operation[name_of(name)] = 1
}

{ sub(/\r$/, "") }

in_comment { take(); next }
/^\/\*/ { in_comment = 1; count = 0; take(); next }

# The rest is code.
/^#if defined _WIN32/ { in_linkage = 1 }
in_linkage { if (/^#endif/) in_linkage = 0; print ""; next }
/^#ifdef __cplusplus/ { close_group() }
/^#define .*\/\*.*\*\// {
    at = index($0, "/*")
    text = substr($0, at + 2)
    sub(/ *\*\/ *$/, "", text)
    text = escape(text)
    print substr($0, 1, at - 1) "/**< @brief" text "\n\n" text " */"
    next
}
/^(VEK_API|HSK_CORE) / { declaration = ""; in_declaration = 1 }
in_declaration {
    line = $0
    sub(/^(VEK_API|HSK_CORE) +/, "", line)
    declaration = declaration line "\n"
    if (/;$/) {
        in_declaration = 0
        declarations[++declared] = declaration
    }
    next
}
declared > 0 { write_entries() }
{ print }

END { if (declared > 0) write_entries() }

# Add a line to the comment, and handle the comment at its end.
function take(    line, is_last) {
    line = $0
    is_last = sub(/ *\*\/ *$/, "", line)
    if (count == 0)
        sub(/^\/\* ?/, "", line)
    else
        sub(/^   /, "", line)
    comment[++count] = line
    if (!is_last)
        return
    in_comment = 0
    if (declared > 0)
        write_entries()
    if (comment[1] ~ /^---- /)
        open_group()
    else if (!seen++)
        write_file_comment()
    else
        entry_count = keep_entry()
}

function keep_entry(    i) {
    for (i = 1; i <= count; ++i)
        entry[i] = comment[i]
    return count
}

function write_file_comment(    rules) {
    rules = FILENAME ~ /hsk\.h$/ ? "core_rules Rules for the core library" \
                                 : "rules Rules for every operation"
    # Without a second paragraph, "More..." on the file's page leads nowhere.
    print "/** @file\n@brief " body(comment[1]) "\n\nSee @ref " substr(rules, 1, index(rules, " ") - 1) \
          " first. */"
    write_comment("@defgroup " rules, 2, 1)
}

function open_group(    title, id, i) {
    close_group()
    title = comment[1]
    gsub(/^-+ *| *-+ *$/, "", title)
    id = tolower(title)
    gsub(/[^a-z]+/, "_", id)
    write_comment("@defgroup " id " " title, 2, 0)
    print "/** @{ */"
    in_group = 1
}

function close_group() {
    if (in_group)
        print "/** @} */"
    in_group = 0
}

# The comment's lines from `first` on, after `command`.
function write_comment(command, first, has_labels,    i, text) {
    text = ""
    for (i = first; i <= count; ++i)
        text = text "\n" (has_labels ? label(comment[i]) : comment[i])
    print "/** " command "\n" brief(text) body(text) " */"
}

# "Texts    A text ends ..." as a list entry.
function label(line,    word) {
    if (line !~ /^[A-Z][a-z]+  +[A-Z0-9"]/) {
        sub(/^ +/, "  ", line)
        return line
    }
    word = line
    sub(/ .*/, "", word)
    sub(/^[A-Z][a-z]+ +/, "", line)
    return "- **" word ":** " line
}

function write_entries(    i, siblings) {
    split_entry()
    siblings = ""
    if (declared > 1) {
        siblings = "\n\nOne entry for "
        for (i = 1; i <= declared; ++i)
            siblings = siblings (i == 1 ? "" : i == declared ? " and " : ", ") \
                       name_of(declarations[i])
        siblings = siblings "."
    }
    for (i = 1; i <= declared; ++i) {
        if (entry_count > 0)
            print "/** " brief(prose) body(prose siblings) sections(declarations[i]) " */"
        printf "%s\n", declarations[i]
    }
    declared = 0
    entry_count = 0
}

# Split the entry into its prose and its items, each with a label and, in a row,
# a key: the name of a parameter or a code.
function split_entry(    i, line, section) {
    prose = ""
    section = ""
    item_count = 0
    for (i = 1; i <= entry_count; ++i) {
        line = entry[i]
        if (substr(line, 1, 12) ~ /^(Parameters|Returns|Prints|Overwrites|Lifetime|Called|Minimum) +$/) {
            section = substr(line, 1, 12)
            sub(/ +$/, "", section)
            add_item(section, substr(line, 13), 1)
        } else if (section != "") {
            add_item(section, substr(line, 13), 0)
        } else {
            prose = prose (i > 1 ? "\n" : "") line
        }
    }
}

function add_item(section, line, is_first,    key) {
    key = ""
    if (section == "Parameters" && match(line, /^[a-z_]+  +/) ||
        section == "Returns" && match(line, /^-?[0-9]+(-[0-9]+)?  +/)) {
        key = substr(line, 1, RLENGTH)
        line = substr(line, RLENGTH + 1)
        sub(/ +$/, "", key)
    }
    if (is_first || key != "") {
        item_label[++item_count] = section
        item_key[item_count] = key
        item_text[item_count] = line
    } else {
        sub(/^ +/, "", line)
        item_text[item_count] = item_text[item_count] "\n" line
    }
}

# The items of a declaration.  A function without a result has no "Returns".
function sections(declaration,    i, text, command) {
    text = ""
    for (i = 1; i <= item_count; ++i) {
        if (item_label[i] == "Parameters") {
            if (declaration !~ "[ *(]" item_key[i] "[,)]")
                continue
            command = "@param " item_key[i] " "
        } else if (item_label[i] == "Returns") {
            if (declaration ~ /^void /)
                continue
            command = item_key[i] == "" ? "@return " : "@retval " item_key[i] " "
        } else {
            command = "@par " item_label[i] "\n"
        }
        text = text "\n\n" command body(item_text[i])
    }
    return text
}

function name_of(text) {
    sub(/\(.*/, "", text)
    sub(/.*[ *]/, "", text)
    return text
}

# The first sentence, for the lists of operations.  Two spaces or a newline
# follow it.
function brief(text) {
    sub(/^\n+/, "", text)
    if (match(text, /\n\n/))
        text = substr(text, 1, RSTART - 1)
    if (match(text, /\.(  |\n)/))
        text = substr(text, 1, RSTART)
    return text == "" ? "" : "@brief " body(text) "\n\n"
}

function body(text) {
    return link(escape(text))
}

# What Doxygen would take for markup.  It takes all between two quotes as it is,
# so quotes are escaped, too.  An empty pair of tags keeps "file://" from becoming a link.
function escape(text) {
    gsub(/\\/, "\\\\\\\\", text)
    gsub(/&/, "\\&amp;", text)
    gsub(/</, "\\&lt;", text)
    gsub(/>/, "\\&gt;", text)
    gsub(/file:\/\//, "file:<b></b>//", text)
    gsub(/"/, "\\&quot;", text)
    return text
}

# Names in quotes are strings, not operations.
function link(text,    done, before, word) {
    done = ""
    while (match(text, /[A-Za-z_][A-Za-z_0-9]*/)) {
        before = substr(text, 1, RSTART - 1)
        word = substr(text, RSTART, RLENGTH)
        text = substr(text, RSTART + RLENGTH)
        if ((word in is_operation) && (done before) !~ /&quot;$/)
            word = word "()"
        else if (word ~ /^(VEK_[A-Z_]*_(SIZE|COUNT)|HSK_(STRING_SIZE|LIST_NAME|(TYPE|ATTRIBUTE|FIRST|SECOND|SETTING)_[A-Z]+))$/)
            word = "#" word
        done = done before word
    }
    return done text
}
