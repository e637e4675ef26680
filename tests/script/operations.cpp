// The operations that the library exports, called with words as arguments.

#include "commands.h"
#include "registry/registry.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <tuple>
#include <type_traits>

const char *last_result, *held_result;

// Storage for the arguments of one call, which shows what the call has changed.  A buffer
// of the caller's has VEK_PATH_SIZE bytes; a constant string has no byte to spare.
struct Storage {
    struct String {
        std::unique_ptr<char[]> bytes;
        std::string before;
    };
    std::vector<String> strings;
    std::vector<std::unique_ptr<int>> numbers;
    std::unique_ptr<char[][VEK_CFG_PATH_SIZE]> files;
    std::vector<int> numbers_before;
};

template <typename T> static T take(Storage &storage, Arguments &arguments)
{
    const std::string word = arguments.next();
    if constexpr (std::is_same_v<T, int>)
        return std::stoi(word);
    else if (word == "null")
        return nullptr;
    else if constexpr (std::is_same_v<T, int *>) {
        storage.numbers_before.push_back(std::stoi(word));
        return storage.numbers.emplace_back(new int(storage.numbers_before.back())).get();
    } else if constexpr (std::is_same_v<T, char(*)[VEK_CFG_PATH_SIZE]>) {
        storage.files.reset(new char[3][VEK_CFG_PATH_SIZE]());
        size_t i = 0;
        for (const std::string &file : split_unquoted(word, ","))
            file.copy(storage.files[i++], VEK_CFG_PATH_SIZE - 1);
        return storage.files.get();
    } else if (word == "{held}") {
        return const_cast<char *>(held_result);
    } else {
        const size_t spare = std::is_same_v<T, char *> ? VEK_PATH_SIZE : 0;
        std::unique_ptr<char[]> bytes(new char[std::max(word.size() + 1, spare)]);
        strcpy(bytes.get(), word.c_str());
        storage.strings.push_back({std::move(bytes), word});
        return storage.strings.back().bytes.get();
    }
}

static std::string show(const Storage &, int result)
{
    return std::to_string(result);
}

static std::string show(const Storage &storage, const char *result)
{
    last_result = result;
    if (result == nullptr)
        return "null";
    for (const Storage::String &argument : storage.strings) {
        const ptrdiff_t offset = result - argument.bytes.get();
        if (offset == 0)
            return "itself";
        if (offset > 0 && offset <= static_cast<ptrdiff_t>(argument.before.size()))
            return "itself+" + std::to_string(offset);
    }
    return quoted(result);
}

static std::string changes(const Storage &storage)
{
    std::string all;
    for (const Storage::String &argument : storage.strings)
        if (argument.before != argument.bytes.get())
            all += " -> " + quoted(argument.bytes.get());
    for (size_t i = 0; i < storage.numbers.size(); ++i)
        if (*storage.numbers[i] != storage.numbers_before[i])
            all += " -> " + std::to_string(*storage.numbers[i]);
    return all;
}

template <typename Result, typename... Parameters>
static Command call(Result (*operation)(Parameters...), bool gives_block = false)
{
    return [=](Arguments &arguments) -> std::string {
        Storage storage;
        storage.strings.reserve(sizeof...(Parameters)); // results are compared by address
        std::tuple<Parameters...> values{take<Parameters>(storage, arguments)...};
        if constexpr (std::is_void_v<Result>) {
            std::apply(operation, values);
            return changes(storage);
        } else {
            Result result = std::apply(operation, values);
            std::string shown = show(storage, result);
            if constexpr (std::is_pointer_v<Result>)
                if (gives_block && *result != '\0' && shown != "itself")
                    free(const_cast<char *>(result));
            return " = " + shown + changes(storage);
        }
    };
}

#define OPERATION(name)                                                                            \
    {                                                                                              \
#name, call(name, !strcmp(#name, "vorn_vek_search_file") || !strcmp(#name, "db_search"))   \
    }
const std::map<std::string, Command> operations = {
#include "exports.inc"
    OPERATION(vek_propfile_add), OPERATION(vek_testrig_add), // which are not exported
};
