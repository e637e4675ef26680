// Qt: each database is the search path of a prefix.

#include "../measure.h"
#include "../parts.h"

#include <QDir>
#include <QFileInfo>

// Prefixes have letters and digits only.
static QString prefix(std::string name)
{
    std::erase(name, '_');
    return QString::fromStdString(name);
}

void add_qt(const tree &made)
{
    for (size_t i = 0; i < made.names.size(); ++i)
        QDir::setSearchPaths(prefix(made.names[i]),
                             {QString::fromStdString(made.database_dirs[i])});
    static std::vector<QString> files;
    for (const sample &one : made.samples)
        files.push_back(prefix(one.database) + ":" +
                        QString::fromStdString(one.mounted.substr(one.database.size() + 1)));
    benchmark::RegisterBenchmark("name to path/Qt", [&made](benchmark::State &state) {
        if (QFileInfo(files[0]).absoluteFilePath().toStdString() != made.samples[0].path)
            state.SkipWithError("not found");
        size_t i = 0;
        for (auto _ : state)
            benchmark::DoNotOptimize(QFileInfo(files[i++ % files.size()]).absoluteFilePath());
    });
}
