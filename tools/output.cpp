#include "output.h"

#include "hsk_control.h"

#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

output_state output;
static int write_error;

string in_colour(FILE *stream, colour colour, const string &text)
{
    const bool is_shown =
        isatty(fileno(stream)) && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
    return is_shown ? "\033[1;" + std::to_string(colour) + "m" + text + "\033[0m" : text;
}

bool is_fault(const string &line)
{
    return line.starts_with("ERROR") || line.starts_with("WARNING") || line.starts_with("ABORT");
}

// Advice follows its warning, in lines that begin with one space.
static void take_line(const char *text, void *)
{
    static bool is_shown;
    const string line = text;
    const size_t end = is_fault(line) ? std::min(line.find(':'), line.size()) : 0;
    const bool continues = is_shown && line.starts_with(' ') && !line.starts_with("  ");
    is_shown = !output.collected && (output.all_lines || is_fault(line) || continues);
    if (output.collected)
        output.collected->push_back(line);
    if (is_shown)
        fprintf(stderr, "%s%s%s",
                in_colour(stderr, line[0] == 'W' ? YELLOW : RED, line.substr(0, end)).c_str(),
                line.c_str() + end, line.ends_with('\n') ? "" : "\n");
}

// Standard output is line buffered, so that answers and other lines keep their order on one
// terminal.  A file that the library opens must not get the number of a closed stream.
void start_output()
{
    struct stat status;
    for (int file = 0; file <= 2; ++file)
        if (fstat(file, &status) != 0 && open("/dev/null", file == 0 ? O_WRONLY : O_RDONLY) != file)
            break;
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    hsk_output_to_error(1);
    hsk_set_asking(0);
    hsk_set_printer(take_line, nullptr);
}

void print_answer(const string &text)
{
    const char end = output.nul && !output.json ? '\0' : '\n';
    if (fwrite(text.data(), 1, text.size(), stdout) != text.size() || putc(end, stdout) == EOF)
        write_error = errno;
}

void print_answer(const row &row, const string &text)
{
    if (!output.json)
        return print_answer(text);
    size_t i = 0;
    nlohmann::ordered_json object;
    for (const string &key : split(row.keys, " ")) {
        const string &value = row.values[i++];
        using field = nlohmann::ordered_json;
        object[key.substr(0, key.find('#'))] = value.empty()        ? field()
                                               : key.ends_with('#') ? field(std::stol(value))
                                                                    : field(value);
    }
    print_answer(object.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace));
}

static strings titles_of(const row &row)
{
    strings titles = split(row.keys, " ");
    for (string &title : titles) {
        title[0] = (char)toupper(title[0]);
        std::ranges::replace(title, '_', ' ');
        std::erase(title, '#');
    }
    return titles;
}

void print_facts(const row &row)
{
    string text;
    const strings titles = titles_of(row);
    for (size_t i = 0; i < titles.size(); ++i) {
        const string &value = row.values[i];
        text += (i > 0 ? "\n" : "") + titles[i] + string(27 - titles[i].size(), ' ') +
                (value.empty() ? "none" : value);
    }
    print_answer(row, text);
}

void print_rows(const vector<row> &rows)
{
    const strings titles = rows.empty() ? strings() : titles_of(rows[0]);
    strings lines(rows.size() + 1);
    for (size_t column = 0, end = 0; column < titles.size(); ++column) {
        for (size_t i = 0; i <= rows.size(); ++i) {
            const string &text = i == 0 ? titles[column] : rows[i - 1].values[column];
            lines[i] += text.empty() ? "-" : text;
            end = std::max(end, lines[i].size() + 2);
        }
        for (string &line : lines)
            line.resize(end, ' ');
    }
    for (string &line : lines)
        line.erase(line.find_last_not_of(' ') + 1);
    if (!rows.empty() && !output.json && !output.nul)
        print_answer(lines[0]);
    for (size_t i = 0; i < rows.size(); ++i)
        for (size_t j = 0; j < (output.nul && !output.json ? titles.size() : 1); ++j)
            print_answer(rows[i], output.nul ? rows[i].values[j] : lines[i + 1]);
}

bool complain(const string &fault)
{
    if (!output.collected && !fault.empty())
        fprintf(stderr, "vekhost: %s\n", fault.c_str());
    return !fault.empty();
}

bool finish_output()
{
    if (fflush(stdout) != 0 || (ferror(stdout) && write_error == 0))
        write_error = errno;
    if (write_error != 0)
        complain(string("standard output cannot be written: ") + strerror(write_error));
    return write_error == 0;
}
