// Qt: each database is the search path of a prefix.

#include "peers.h"

#include <QDir>
#include <QFileInfo>

struct question {
    QString name, path;
};

static std::vector<question> questions; // one a sample
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
        questions.push_back(
            {prefix(one.database) + ":" +
                 QString::fromStdString(one.mounted.substr(one.database.size() + 1)),
             QString::fromStdString(one.path)});
}

// A name that is not resolved has another length.  To compare every letter would
// be part of what is measured.
bool qt_resolve(const sample &one)
{
    const question &asked = questions[static_cast<size_t>(&one - first)];
    return QFileInfo(asked.name).absoluteFilePath().size() == asked.path.size();
}
