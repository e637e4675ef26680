# Turns the plain comments of include/vek.h into comments that Doxygen takes.
# The header is a manual to be read as text, so it carries no markup:
#
#   /* ---- Title ---- ...    becomes a group, which lasts to the next one
#   a comment before VEK_API  becomes the entry of each declaration below it
#   a comment behind a #define becomes its entry
#   the first comment         becomes a group of its own, the rules for all
#   all other comments        stay plain
#
# "Result:", "Prints" and "until:" begin paragraphs, and the names of
# operations become links.

BEGIN {
    while ((getline name < "src/exports.txt") > 0)
        if (name !~ /^#/)
            is_operation[name] = 1
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
/^VEK_API / { declaration = ""; in_declaration = 1 }
in_declaration {
    line = $0
    sub(/^VEK_API +/, "", line)
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

# Take a line of a comment, and act on the comment at its end.
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

function write_file_comment() {
    print "/** @file\n@brief " body(comment[1]) " */"
    write_comment("@defgroup rules Rules for every operation", 2, 1)
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

# The comment's lines from `first` on, behind `command`.
function write_comment(command, first, has_labels,    i, text) {
    text = ""
    for (i = first; i <= count; ++i)
        text = text "\n" (has_labels ? label(comment[i]) : comment[i])
    print "/** " command "\n" brief(text) body(text) " */"
}

# "Texts    A text ends ..." as a list entry.
function label(line,    word) {
    if (line !~ /^[A-Z][a-z]+  +[A-Z"]/) {
        sub(/^ +/, "  ", line)
        return line
    }
    word = line
    sub(/ .*/, "", word)
    sub(/^[A-Z][a-z]+ +/, "", line)
    return "- **" word ":** " line
}

function write_entries(    i, j, text, siblings) {
    text = ""
    for (i = 1; i <= entry_count; ++i)
        text = text (i > 1 ? "\n" : "") entry[i]
    siblings = ""
    if (declared > 1 && entry_count > 0) {
        siblings = "\n\nOne entry for "
        for (i = 1; i <= declared; ++i)
            siblings = siblings (i == 1 ? "" : i == declared ? " and " : ", ") \
                       name_of(declarations[i])
        siblings = siblings ", in this order."
    }
    for (i = 1; i <= declared; ++i) {
        if (entry_count > 0)
            print "/** " brief(text) body(text siblings) " */"
        printf "%s\n", declarations[i]
    }
    declared = 0
    entry_count = 0
}

function name_of(text) {
    sub(/\(.*/, "", text)
    sub(/.*[ *]/, "", text)
    return text
}

# The first sentence, for the lists of operations.  Two blanks or a line end
# stand behind it.
function brief(text) {
    sub(/^\n+/, "", text)
    if (match(text, /\n\n/))
        text = substr(text, 1, RSTART - 1)
    if (match(text, /\.(  |\n)/))
        text = substr(text, 1, RSTART)
    return text == "" ? "" : "@brief " body(text) "\n\n"
}

function body(text) {
    return paragraphs(link(escape(text)))
}

# What Doxygen would take for markup.  It takes all between two quotes as it is,
# so quotes go, too.  An empty pair of tags keeps "file://" from becoming a link.
function escape(text) {
    gsub(/\\/, "\\\\\\\\", text)
    gsub(/&/, "\\&amp;", text)
    gsub(/</, "\\&lt;", text)
    gsub(/>/, "\\&gt;", text)
    gsub(/file:\/\//, "file:<b></b>//", text)
    gsub(/"/, "\\&quot;", text)
    return text
}

# Names in quotes are texts, not operations.
function link(text,    done, before, word) {
    done = ""
    while (match(text, /[A-Za-z_][A-Za-z_0-9]*/)) {
        before = substr(text, 1, RSTART - 1)
        word = substr(text, RSTART, RLENGTH)
        text = substr(text, RSTART + RLENGTH)
        if ((word in is_operation) && (done before) !~ /&quot;$/)
            word = word "()"
        else if (word ~ /^VEK_[A-Z_]*_(SIZE|COUNT)$/)
            word = "#" word
        done = done before word
    }
    return done text
}

function paragraphs(text) {
    gsub(/(  |\n)Result: /, "\n\n<b>Result:</b> ", text)
    gsub(/\.(  |\n)Prints /, ".\n\n<b>Prints</b> ", text)
    gsub(/(  |\n)until: /, "\n\n<b>Until:</b> ", text)
    return text
}
