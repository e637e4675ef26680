/* The strings that identify this build.  Their source, in C, is generated.  */

#ifndef VEK_BUILD_TEXTS_H
#define VEK_BUILD_TEXTS_H

#ifdef __cplusplus
extern "C" {
#endif

extern const char *const vek_build_texts[]; /* terminated by a null pointer */
extern const char vek_version_release[];    /* what vek_version returns */
extern const char vek_release[];            /* what vek_build_version returns */

#ifdef __cplusplus
}
#endif

#endif
