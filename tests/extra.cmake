# The locale of a process is set once and for all: these conversions are tested in a program of their own.
add_executable(locale_tests locale/DecimalCommaTest.cpp)
target_link_libraries(locale_tests PRIVATE ak_kit GTest::gtest)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/locales)
add_test(NAME locale.DecimalComma COMMAND locale_tests ${CMAKE_CURRENT_BINARY_DIR}/locales)
