add_library(fmt::fmt INTERFACE IMPORTED)
target_include_directories(fmt::fmt SYSTEM INTERFACE ${ZANT_PORTABLE_HEADERS})
target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
