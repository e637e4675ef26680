/* resolve.c - print the path of each file that a model names.
   Usage: resolve MODEL, with the name of the product in KLV_PRODUCT_NAME.  */

#include <hsk_control.h>
#include <stdio.h>
#include <stdlib.h>
#include <vek.h>

int main(int argc, char **argv)
{
    char line[1024], file_class[VEK_CLASS_SIZE], name[VEK_PATH_SIZE];
    FILE *model = argc == 2 ? fopen(argv[1], "r") : NULL;

    hsk_output_to_error(1); /* the library's lines do not mix with the answer */
    if (model == NULL)
        return 1;
    if (vorn_vek_cfg_env_read("") != 0) /* the product of KLV_PRODUCT_NAME */
        return 1;
    if (vorn_vek_cfg_env_read("heron") != 0) /* one of its plug-ins */
        return 1;
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
