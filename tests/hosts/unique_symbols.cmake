# cmake -DNM=... -DMODULE=plugin.so -P unique_symbols.cmake
# Fails when the module defines a unique symbol, or when it does not show the symbols of zant.hpp at all.
execute_process(COMMAND ${NM} -C ${MODULE} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES " W zant::symbol::reset")
    message(FATAL_ERROR "no inline functions of zant.hpp are found in ${MODULE}")
endif()
string(REGEX MATCHALL "[0-9a-f]+ u [^\n]+" unique "${symbols}")
if(unique)
    message(FATAL_ERROR "a plug-in that uses zant.hpp stays in its host for good: ${unique}")
endif()
