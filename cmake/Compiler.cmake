# Compiler settings of the project: warnings are errors, the debug preset runs under sanitizers,
# the release preset is hardened.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-qual -Wformat=2 -Werror)
# The compiler of Debian 12 decides: later ones know more warnings, and falsely report copies of short
# UTF-16 texts inside the standard library.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13)
  add_compile_options(-Wno-error -Wno-array-bounds -Wno-stringop-overread -Wno-stringop-overflow)
endif()

if(KEYSTRAND_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=address,undefined)
else()
  add_compile_options(-fstack-protector-strong -fstack-clash-protection -fcf-protection
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS)
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()
# All libraries are instrumented, so that the fuzzer is guided by their coverage too.
if(KEYSTRAND_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
