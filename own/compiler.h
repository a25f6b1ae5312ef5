/* What differs between compilers and processors, in one place, and what the library expects of all of them.
 *
 * Whatever is special to one compiler or processor has a plain form beside it, in standard C or C++, which every other
 * one takes. With ZANT_PLAIN_CODE defined (CMake: -DZANT_PLAIN_CODE=ON) the plain forms are taken everywhere; the tests
 * run them so. Results are the same, bit by bit.
 */
#ifndef ZANT_OWN_COMPILER_H
#define ZANT_OWN_COMPILER_H

/* ZANT_GNU_CODE: builtins, vector types and assembler statements of gcc and clang may be used.
 * ZANT_SSE2_CODE: so may the vector operations of x86-64. */
#if defined(__GNUC__) && !defined(ZANT_PLAIN_CODE)
#define ZANT_GNU_CODE
#if defined(__x86_64__) && defined(__SSE2__)
#define ZANT_SSE2_CODE
#endif
#endif

/* Hints to the optimiser. */
#ifdef ZANT_GNU_CODE
#define ZANT_NOINLINE __attribute__((noinline))
#define ZANT_COLD __attribute__((noinline, cold))
#else
#define ZANT_NOINLINE
#define ZANT_COLD
#endif

/* Behind a function whose first argument must not be null: gcc and clang warn where a literal null is passed. */
#if defined(__GNUC__)
#define ZANT_NEEDS_FIRST __attribute__((nonnull(1)))
#else
#define ZANT_NEEDS_FIRST
#endif

/* ZANT_EXPORTED: the module that defines the function shows it to others. Compilers of the Microsoft kind want to hear
 * it where a function is defined only, the others where it is declared as well. */
#if defined(__GNUC__)
#define ZANT_EXPORTED __attribute__((visibility("default")))
#elif defined(_MSC_VER)
#define ZANT_EXPORTED __declspec(dllexport)
#else
#define ZANT_EXPORTED
#endif

/* Around classes with virtual operations that are never deleted through a base: gcc and clang would warn of each. */
#if defined(__GNUC__)
#define ZANT_BEGIN_UNDELETED _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wnon-virtual-dtor\"")
#define ZANT_END_UNDELETED _Pragma("GCC diagnostic pop")
#else
#define ZANT_BEGIN_UNDELETED
#define ZANT_END_UNDELETED
#endif

/* Around data that stays inside of whatever the library is linked into. */
#if defined(__GNUC__)
#define ZANT_BEGIN_INTERNAL _Pragma("GCC visibility push(hidden)")
#define ZANT_END_INTERNAL _Pragma("GCC visibility pop")
#else
#define ZANT_BEGIN_INTERNAL
#define ZANT_END_INTERNAL
#endif

#ifdef __cplusplus
static_assert(sizeof(void*) == 8, "records that cross to the engine have pointers of 8 bytes");
#endif

/* Compilers that do not say their byte order are for processors of one order only. */
#if defined(__BYTE_ORDER__)
#if __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "Zant needs a little-endian processor: records, blocks and digits in words begin with their lowest byte"
#endif
#elif !defined(_MSC_VER)
#error "Zant does not know the byte order of this compiler's processor; it needs a little-endian one"
#endif

#endif
