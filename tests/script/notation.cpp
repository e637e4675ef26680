#include "notation.h"

#include "vek.h"

#include <regex>
#include <sstream>

std::string home_dir;

std::string replaced(std::string text, const std::string &old, const std::string &with)
{
    for (size_t at = 0; !old.empty() && (at = text.find(old, at)) != text.npos; at += with.size())
        text.replace(at, old.size(), with);
    return text;
}

// Replaces bytes and repetitions, which do not depend on the process.
static std::string decode_bytes(const std::string &notation)
{
    static const std::regex item(R"(\{(.)\*(\d+)\}|\{([0-9a-f]{2})\})");
    std::string text;
    auto rest = notation.cbegin();
    for (std::smatch found; std::regex_search(rest, notation.cend(), found, item);
         rest = found[0].second) {
        text.append(rest, found[0].first);
        if (found[3].matched)
            text += static_cast<char>(std::stoi(found[3], nullptr, 16));
        else
            text.append(std::stoul(found[2]), *found[1].first);
    }
    return text.append(rest, notation.cend());
}

static std::string encode_bytes(const std::string &text)
{
    static const char digits[] = "0123456789abcdef";
    std::string notation;
    for (size_t i = 0, end; i < text.size(); i = end) {
        end = std::min(text.find_first_not_of(text[i], i), text.size());
        const auto byte = static_cast<unsigned char>(text[i]);
        std::string one(1, text[i]);
        if (byte < ' ' || byte > '~')
            one = {'{', digits[byte / 16], digits[byte % 16], '}'};
        else if (end - i > 20)
            one = "{" + one + "*" + std::to_string(end - i) + "}";
        for (size_t left = end - i > 20 && one.size() > 4 ? 1 : end - i; left > 0; --left)
            notation += one;
    }
    return notation;
}

std::string decode(const std::string &notation)
{
    std::string text = replaced(decode_bytes(notation), "{home}", home_dir);
    if (text.find("{tmp}") != text.npos) {
        static const std::string dir = vorn_vek_tmp_file_path();
        text = replaced(text, "{tmp}", dir.substr(0, dir.size() - 1));
    }
    return text;
}

std::string encode(const std::string &text)
{
    static const std::regex temporary(R"(\{home\}-tmp/vek-\w+)"), process(R"(\.vek-\d+-)"),
        file(R"((/var/tmp/\.vek-previous-\d+)-\w+-\w+)");
    std::string notation = replaced(text, home_dir, "{home}");
    notation = std::regex_replace(notation, temporary, "{tmp}");
    notation = std::regex_replace(notation, file, "$1-{file}");
    return encode_bytes(std::regex_replace(notation, process, ".vek-{pid}-"));
}

std::string canonical(const std::string &notation)
{
    return encode_bytes(decode_bytes(notation));
}

std::string quoted(const std::string &text)
{
    const bool is_plain = !text.empty() && text.find(' ') == text.npos;
    return is_plain ? encode(text) : "'" + encode(text) + "'";
}

Lines split_unquoted(const std::string &line, const std::string &separator)
{
    Lines parts(1);
    bool is_quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        is_quoted ^= line[i] == '\'';
        if (!is_quoted && line.compare(i, separator.size(), separator) == 0) {
            parts.emplace_back();
            i += separator.size() - 1;
        } else
            parts.back() += line[i];
    }
    return parts;
}

Lines words_of(const std::string &command)
{
    Lines words = split_unquoted(command, " ");
    std::erase(words, "");
    return words;
}

std::string unquoted(const std::string &word)
{
    const bool is_quoted = word.size() > 1 && word.front() == '\'' && word.back() == '\'';
    return decode(is_quoted ? word.substr(1, word.size() - 2) : word);
}

Lines lines_of(const std::string &text)
{
    Lines lines;
    std::istringstream rest(text);
    for (std::string line; std::getline(rest, line);)
        lines.push_back(line);
    return lines;
}
