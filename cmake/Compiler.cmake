# What every target of ours is compiled with. Warnings are errors on our own code; headers of
# libraries come in as system headers and are left alone.
add_library(larder_options INTERFACE)
target_compile_options(larder_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference
    -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 reports null dereferences and overlapping copies inside the standard library's own
    # inlined code.
    target_compile_options(larder_options INTERFACE -Wno-null-dereference -Wno-restrict)
endif()

if(LARDER_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(LARDER_FUZZ)
    add_compile_options(-fsanitize=address,undefined,fuzzer-no-link)
    add_link_options(-fsanitize=address,undefined)
endif()
