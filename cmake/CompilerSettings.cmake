# Warnings are errors in every target of this project; a shared library names everything that it needs.
add_library(ftm_warnings INTERFACE)
target_compile_options(ftm_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
target_compile_definitions(ftm_warnings INTERFACE QT_NO_FOREACH QT_NO_CAST_TO_ASCII)

# The sanitizers leave their run-time to the executable, so their libraries cannot be complete.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(CMAKE_SHARED_LINKER_FLAGS "${CMAKE_SHARED_LINKER_FLAGS} -Wl,--no-undefined")
endif()
