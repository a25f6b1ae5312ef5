/* The version of this library, for C and C++. The build takes the project's version from here.
 * What the numbers promise: docs/versions.md.
 */
#ifndef ZANT_OWN_VERSION_H
#define ZANT_OWN_VERSION_H

#define ZANT_VERSION_MAJOR 3
#define ZANT_VERSION_MINOR 0
#define ZANT_VERSION_PATCH 0

/* For comparisons: #if ZANT_VERSION_NUMBER >= 30000 */
#define ZANT_VERSION_NUMBER (ZANT_VERSION_MAJOR * 10000 + ZANT_VERSION_MINOR * 100 + ZANT_VERSION_PATCH)

/* For people: "3.0.0". */
#define ZANT_VERSION ZANT_VERSION_TEXT_(ZANT_VERSION_MAJOR, ZANT_VERSION_MINOR, ZANT_VERSION_PATCH)
#define ZANT_VERSION_TEXT_(major, minor, patch) \
    ZANT_NUMBER_TEXT_(major) "." ZANT_NUMBER_TEXT_(minor) "." ZANT_NUMBER_TEXT_(patch)
#define ZANT_NUMBER_TEXT_(number) #number

#endif
