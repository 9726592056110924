# What every target of the project has in common, and one helper for each kind of target.

find_program(CCACHE ccache)
if(CCACHE)
   set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

find_package(Threads REQUIRED)

# How the project itself is compiled. It is for every target here, and for nobody who links one of the libraries.
add_library(ler_options INTERFACE)
target_include_directories(ler_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/platform)
target_compile_options(ler_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
                                             -fno-semantic-interposition -fno-omit-frame-pointer)
target_link_libraries(ler_options INTERFACE Threads::Threads)
if(LER_SANITIZE)
   add_compile_options(-fsanitize=${LER_SANITIZE} -fno-sanitize-recover=all)
   add_link_options(-fsanitize=${LER_SANITIZE})
   # The checks that a sanitizer adds make GCC take the unused part of a variant for something that is read.
   target_compile_options(ler_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
if(LER_FUZZ)
   # libFuzzer sees which branches an input takes.
   target_compile_options(ler_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The programs that the tsan preset builds and runs.
add_custom_target(concurrent_tests)

# ler_test(NAME sources...): one GoogleTest program, each of its tests known to CTest. A program whose name ends in
# "Concurrent" gets the label that the tsan preset runs.
function(ler_test NAME)
   add_executable(${NAME} ${ARGN})
   target_link_libraries(${NAME} PRIVATE ler_options ler_test_support GTest::gmock GTest::gtest_main)
   # What is tested is compiled as ever; the tests themselves are many, and take a good part of the time less like this.
   target_compile_options(${NAME} PRIVATE $<$<CONFIG:Release>:-O1> $<$<CONFIG:Debug>:-O0>
                                          $<$<BOOL:${LER_FUZZ}>:-fno-sanitize=fuzzer-no-link>)
   set(labels unit)
   if(NAME MATCHES "Concurrent$")
      set(labels concurrent)
      add_dependencies(concurrent_tests ${NAME})
   endif()
   gtest_discover_tests(${NAME} TEST_PREFIX ${NAME}. PROPERTIES LABELS "${labels}" DISCOVERY_TIMEOUT 60)
endfunction()
