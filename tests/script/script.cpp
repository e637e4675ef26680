#include "script.h"

#include "commands.h"

// "== title" begins a case, ": name" a block.  common.txt has blocks for all scripts.
void read_script(const std::string &path, Script &script)
{
    Lines *lines = nullptr;
    size_t number = 0;
    for (const std::string &line : lines_of(read_file(path))) {
        ++number;
        if (line.empty() || line[0] == '#')
            continue;
        if (line.starts_with("== ")) {
            script.cases.push_back({line.substr(3), number, {}});
            lines = &script.cases.back().lines;
        } else if (line.starts_with(": "))
            lines = &script.blocks[line.substr(2)];
        else
            lines->push_back(line);
    }
}

static bool is_text(const std::string &line)
{
    return line.starts_with("  ");
}

// The lines as encode writes them: "  A / B" is two lines, and "  use NAME" those of a block.
Lines expected_lines(const Script &script, const Lines &lines)
{
    Lines all;
    for (const std::string &line : lines) {
        const size_t end = is_text(line) ? line.find(" / ") : line.npos;
        Lines parts;
        if (end != line.npos)
            parts = {line.substr(0, end), "  " + line.substr(end + 3)};
        else if (line.starts_with("  use "))
            for (const std::string &inner : script.blocks.at(line.substr(6)))
                parts.push_back("  " + inner);
        if (parts.empty())
            parts.push_back(canonical(line));
        else
            parts = expected_lines(script, parts);
        all.insert(all.end(), parts.begin(), parts.end());
    }
    return all;
}

// The commands of a block are one command, which shows its lines only if they differ.
static Lines run_block(const Script &script, const std::string &name)
{
    const Lines expected = expected_lines(script, script.blocks.at(name));
    const Lines made = run_lines(script, expected);
    Lines all = {"use " + name};
    for (const std::string &line : made == expected ? Lines{} : made)
        all.push_back("  " + line);
    return all;
}

// Runs "COMMAND = result; COMMAND = result", where "&" repeats the operation before it.  Lines
// below are the text of a command that is alone on its line.
Lines run_line(const std::string &line, const std::string &text)
{
    std::string shown, operation, output;
    const Lines parts = split_unquoted(line, "; ");
    for (const std::string &part : parts) {
        const std::string call = split_unquoted(part + " ", " = ")[0];
        const std::string command = split_unquoted(call, " -> ")[0];
        const std::string typed = command.substr(0, command.find_last_not_of(' ') + 1);
        const bool repeats = typed.starts_with("& ");
        if (!repeats)
            operation = typed.substr(0, typed.find(' '));
        const std::string result =
            execute(repeats ? operation + typed.substr(1) : typed, parts.size() == 1 ? text : "");
        const size_t end = std::min(result.find('\n'), result.size());
        shown += (shown.empty() ? "" : "; ") + canonical(typed) + result.substr(0, end);
        output += result.substr(end);
    }
    return lines_of(shown + output);
}

Lines run_lines(const Script &script, const Lines &lines)
{
    Lines all;
    for (size_t i = 0; i < lines.size();) {
        const std::string &line = lines[i++];
        std::string text;
        for (; i < lines.size() && is_text(lines[i]); ++i)
            text += lines[i].substr(2) + "\n";
        const bool uses_block = line.starts_with("use ");
        const size_t end = uses_block ? std::min(line.find("; "), line.size()) : 0;
        Lines made = uses_block ? run_block(script, line.substr(4, end - 4)) : Lines{""};
        if (end < line.size()) {
            const Lines more = run_line(line.substr(uses_block ? end + 2 : 0), text);
            made[0] += (uses_block ? "; " : "") + more[0];
            made.insert(made.end(), more.begin() + 1, more.end());
        }
        all.insert(all.end(), made.begin(), made.end());
    }
    return all;
}

std::vector<Lines> parts_of(const Lines &lines)
{
    std::vector<Lines> parts(1);
    for (const std::string &line : lines)
        if (line == "-- process")
            parts.emplace_back();
        else
            parts.back().push_back(line);
    return parts;
}
