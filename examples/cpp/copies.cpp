// copies.cpp - print the file that a name leads to, and the copies that it hides.
// Usage: copies CLASS NAME, with the name of the product in KLV_PRODUCT_NAME.

#include <cstdlib>
#include <filesystem>
#include <hsk_control.h>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <vek.h>

// Releases the result of vorn_vek_search_file.  An empty one is not a block.
struct path_deleter {
    void operator()(char *path) const
    {
        if (*path != '\0')
            std::free(path);
    }
};
using unique_path = std::unique_ptr<char, path_deleter>;

// A file can have several paths.
static bool is_same_file(const char *path, const char *other)
{
    std::error_code error;
    return std::filesystem::equivalent(path, other, error);
}

int main(int argc, char **argv)
{
    hsk_output_to_error(1); // the library's lines do not mix with the answer
    if (argc != 3) {
        std::cerr << "Usage: copies CLASS NAME\n";
        return 2;
    }
    if (vorn_vek_cfg_env_read("") != 0)
        return 1;
    const unique_path found(vorn_vek_search_file(argv[1], argv[2], 1));
    if (*found == '\0') {
        std::cout << "not found\n";
        return 1;
    }
    std::cout << "found   " << found.get() << "\n";
    const std::string file = std::filesystem::path(found.get()).filename().string();
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level) {
        const std::string path = std::string(vorn_vek_get_tbl_path(argv[1], level)) + "/" + file;
        if (vek_file_exists(path.c_str()) != 0 && !is_same_file(path.c_str(), found.get()))
            std::cout << "hidden  " << path << "\n";
    }
}
