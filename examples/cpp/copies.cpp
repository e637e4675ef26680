// copies.cpp - list the copies of a file, and which of them hides the others.
// Usage: copies CLASS NAME, with the name of the product in KLV_PRODUCT_NAME.

#include <cstdlib>
#include <hsk_control.h>
#include <iostream>
#include <memory>
#include <string>
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

int main(int argc, char **argv)
{
    hsk_output_to_error(1); // the library's lines do not mix with the answer
    if (argc != 3 || vorn_vek_cfg_env_read("") != 0)
        return 1;
    const unique_path found(vorn_vek_search_file(argv[1], argv[2], 1));
    const std::string file = vorn_vek_input2file(argv[2]);
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level) {
        const std::string path = std::string(vorn_vek_get_tbl_path(argv[1], level)) + "/" + file;
        if (vek_file_exists(path.c_str()) != 0)
            std::cout << (path == found.get() ? "found   " : "hidden  ") << path << "\n";
    }
}
