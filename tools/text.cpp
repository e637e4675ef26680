// Words, and the nearest spelling of a name.

#include "text.h"

// How many characters have to be inserted, removed, replaced or swapped with their neighbour.
static size_t distance(string from, string to)
{
    std::ranges::transform(from, from.begin(), [](unsigned char c) { return tolower(c); });
    std::ranges::transform(to, to.begin(), [](unsigned char c) { return tolower(c); });
    vector<vector<size_t>> row(from.size() + 1, vector<size_t>(to.size() + 1));
    for (size_t i = 0; i <= from.size(); ++i)
        for (size_t j = 0; j <= to.size(); ++j) {
            row[i][j] = i + j;
            if (i > 0 && j > 0)
                row[i][j] = std::min({row[i - 1][j] + 1, row[i][j - 1] + 1,
                                      row[i - 1][j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[i][j] = std::min(row[i][j], row[i - 2][j - 2] + 1);
        }
    return row[from.size()][to.size()];
}

string did_you_mean(const string &name, const strings &known, const char *before, const char *after)
{
    string best;
    size_t least = name.size() < 3 ? 1 : name.size() / 3 + 1;
    for (const string &candidate : known)
        if (candidate != name && distance(name, candidate) < least) {
            best = candidate;
            least = distance(name, candidate);
        }
    return best.empty() ? "" : "; did you mean " + (before + best + after) + "?";
}

string environment(const char *variable)
{
    const char *value = getenv(variable);
    return value ? value : "";
}

strings split(const string &text, const char *separators)
{
    strings parts;
    for (size_t start = 0, end; start < text.size(); start = end + 1) {
        end = std::min(text.find_first_of(separators, start), text.size());
        if (end > start)
            parts.push_back(text.substr(start, end - start));
    }
    return parts;
}

bool is_in(const string &word, const string &list)
{
    const strings words = split(list, " ");
    return std::ranges::find(words, word) != words.end();
}
