/* resolve.c - print the path of each file that a model names.
   Usage: resolve MODEL [PLUGIN]..., with the name of the product in KLV_PRODUCT_NAME.  */

#include <hsk_control.h>
#include <stdio.h>
#include <stdlib.h>
#include <vek.h>

int main(int argc, char **argv)
{
    char line[1024], file_class[VEK_CLASS_SIZE], name[VEK_PATH_SIZE];
    FILE *model;

    hsk_output_to_error(1); /* the library's lines do not mix with the answer */
    if (argc < 2) {
        fputs("Usage: resolve MODEL [PLUGIN]...\n", stderr);
        return 2;
    }
    if (vorn_vek_cfg_env_read("") != 0) /* the product of KLV_PRODUCT_NAME */
        return 1;
    for (int i = 2; i < argc; ++i)
        if (vorn_vek_cfg_env_read(argv[i]) != 0)
            return 1;
    model = fopen(argv[1], "r");
    if (model == NULL) {
        perror(argv[1]);
        return 1;
    }
    while (fgets(line, sizeof line, model) != NULL) {
        if (sscanf(line, "file %30s %267s", file_class, name) != 2)
            continue;
        char *path = vorn_vek_search_file(file_class, name, 1);
        printf("%-8s%s\n", file_class, *path != '\0' ? path : "not found");
        if (*path != '\0')
            free(path);
    }
    fclose(model);
    return 0;
}
