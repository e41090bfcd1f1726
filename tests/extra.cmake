# The locale of a process is set once and for all: these conversions are tested in a program of their own.
add_executable(locale_tests locale/DecimalCommaTest.cpp)
target_link_libraries(locale_tests PRIVATE ak_kit GTest::gtest)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/locales)
add_test(NAME locale.DecimalComma COMMAND locale_tests ${CMAKE_CURRENT_BINARY_DIR}/locales)

# The table of the character sets is made from the code; the document must be what the code gives.
add_executable(character_set_table ${PROJECT_SOURCE_DIR}/docs/CharacterSetTable.cpp)
target_link_libraries(character_set_table PRIVATE ak_kit)
add_test(NAME docs.CharacterSets
         COMMAND sh -c "$<TARGET_FILE:character_set_table> | diff - ${PROJECT_SOURCE_DIR}/docs/character-sets.md")

# The test of the file formats reads its examples out of the page that describes them.
target_compile_definitions(host_tests PRIVATE AK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

# System calls and allocations go through functions of the test, so it is a program of its own.
add_executable(fault_tests faults/FaultInjectionTest.cpp)
target_link_libraries(fault_tests PRIVATE ak_kit GTest::gtest GTest::gtest_main)
foreach(wrapped open openat close pread pwrite lseek fsync ftruncate renameat fchmod stat lstat fstat statx faccessat
        fcntl flock malloc calloc realloc free _Znwm _ZdlPv _ZdlPvm)
  target_link_options(fault_tests PRIVATE -Wl,--wrap=${wrapped})
endforeach()
gtest_discover_tests(fault_tests TEST_PREFIX "files." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
