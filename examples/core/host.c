/* host.c - print the path of a file.  The core library is a part of the program.
   Usage: host CLASS NAME, with the name of the product in KLV_PRODUCT_NAME.  */

#include <stdio.h>
#include <stdlib.h>
#include <vek.h>

int main(int argc, char **argv)
{
    if (argc != 3 || vorn_vek_cfg_env_read("") != 0)
        return 1;
    char *path = vorn_vek_search_file(argv[1], argv[2], 1);
    if (*path == '\0')
        return 1;
    puts(path);
    free(path);
    return 0;
}
