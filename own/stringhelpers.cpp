// String and memory helpers, and numbers appended to strings. The standard library does the moving where it is defined
// to do the same.
#include <cstdint>
#include <cstring>

#include "own/str2num.h"

namespace Zant {

namespace {

constexpr size_t numberRoom = 30;
constexpr size_t wordSize = 8;

char* end(char* s) {
    return s + std::strlen(s);
}

}  // namespace

void s2n_numcat(void* p, char* s) {
    size_t room = numberRoom;
    size_t_2_modulo(reinterpret_cast<uintptr_t>(p), end(s), room, 0, 16, false);
}

void s2n_numcat(int v, char* s) {
    size_t room = numberRoom;
    int_2_modulo(v, end(s), room, 0, 10);
}

void s2n_numcat(double v, char* s, size_t room, int decimals) {
    double_2_sdecimal(v, end(s), room, decimals, 0);
}

void s2n_numcat(float v, char* s) {
    s2n_numcat(static_cast<double>(v), s, 12, 5);
}

void s2n_numcat(unsigned int v, char* s, int width) {
    size_t room = width < 0 ? 0 : static_cast<size_t>(width) + 1;
    size_t_2_modulo(v, end(s), room, '0', 10, false);
}

void s2n_numsrd(const char* prefix, int n, const char* suffix, char* out) {
    *out = 0;
    if (prefix) std::strcpy(out, prefix);
    s2n_numcat(n, out);
    if (suffix) std::strcat(out, suffix);
}

size_t s2n_strlen(const char* s) {
    return std::strlen(s);
}

char* s2n_strcpy(char* d, const char* s) {
    return std::strcpy(d, s);
}

char* s2n_strcat(char* d, const char* s) {
    return std::strcat(d, s);
}

char* s2n_strncpy(char* d, const char* s, size_t n) {
    const void* terminator = std::memchr(s, 0, n);
    if (terminator) n = static_cast<size_t>(static_cast<const char*>(terminator) - s) + 1;
    s2n_memcpy(d, s, n);
    return d;
}

int s2n_strcmp(const char* a, const char* b) {
    return s2n_strncmp(a, b, SIZE_MAX);
}

int s2n_strncmp(const char* a, const char* b, size_t n) {
    for (; n != 0; ++a, ++b, --n) {
        const signed char left = static_cast<signed char>(*a);
        const signed char right = static_cast<signed char>(*b);
        if (left != right) return left < right ? -1 : 1;
        if (left == 0) return 0;
    }
    return 0;
}

const char* s2n_strstr(const char* s, const char* needle) {
    return std::strstr(s, needle);
}

char* s2n_strstr(char* s, const char* needle) {
    return std::strstr(s, needle);
}

int s2n_memcmp(const void* a, const void* b, size_t n) {
    const unsigned char* left = static_cast<const unsigned char*>(a);
    const unsigned char* right = static_cast<const unsigned char*>(b);
    for (size_t i = 0; i < n; ++i) {
        if (left[i] != right[i]) return left[i] - right[i];
    }
    return 0;
}

void s2n_memset(void* d, unsigned char c, size_t n) {
    if (n != 0) std::memset(d, c, n);
}

void s2n_memcpy(void* d, const void* s, size_t n) {
    if (n != 0) std::memcpy(d, s, n);
}

void s2n_amemset(void* d, unsigned char c, size_t n) {
    s2n_memset(d, c, n / wordSize * wordSize);
}

void s2n_amemcpy(void* d, const void* s, size_t n) {
    s2n_memcpy(d, s, n / wordSize * wordSize);
}

}  // namespace Zant
