/* The texts that identify this build; the build writes their source, in C.  */

#ifndef VEK_BUILD_TEXTS_H
#define VEK_BUILD_TEXTS_H

#ifdef __cplusplus
extern "C" {
#endif

extern const char *const vek_build_texts[]; /* a null pointer ends them */
extern const char vek_version_release[];    /* what vek_version returns */
extern const char vek_release[];            /* what vek_build_version returns */

#ifdef __cplusplus
}
#endif

#endif
