# Compiler settings that every target of the project shares.
find_package(Threads REQUIRED)
if(AK_NATIVE STREQUAL "linux")
  find_package(PkgConfig REQUIRED)
  find_package(PNG REQUIRED)
  find_package(JPEG REQUIRED)
  find_package(TIFF 4.5 REQUIRED)
  pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo)
  pkg_check_modules(HIGHWAY REQUIRED IMPORTED_TARGET libhwy)
  pkg_check_modules(PANGO REQUIRED IMPORTED_TARGET pangocairo pangoft2 fontconfig harfbuzz fribidi)
  pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0)
  set(native_headers ${PROJECT_SOURCE_DIR}/platform/include)
else()
  # The published headers are the system's; the project's own beside them come from the tree.
  set(native_headers ${CMAKE_BINARY_DIR}/native_headers)
  file(MAKE_DIRECTORY ${native_headers})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/platform/include/AKPlatform ${native_headers}/AKPlatform SYMBOLIC)
endif()
if(AK_WINDOW AND AK_NATIVE STREQUAL "linux")
  pkg_check_modules(GTKMM REQUIRED IMPORTED_TARGET gtkmm-4.0)
  find_program(GLIB_COMPILE_RESOURCES glib-compile-resources REQUIRED)
endif()

add_library(ak_settings INTERFACE)
target_include_directories(ak_settings INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${native_headers}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/akkit>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/akkit/platform>)
target_compile_features(ak_settings INTERFACE cxx_std_20)
target_link_libraries(ak_settings INTERFACE Threads::Threads)

# Adds options for the project's own sources; what is installed does not carry them.
function(ak_compile_options)
  foreach(option ${ARGN})
    target_compile_options(ak_settings INTERFACE $<BUILD_INTERFACE:${option}>)
  endforeach()
endfunction()
# Tables and slots hold functions at even addresses. clang, and g++ where it optimises, align all functions by themselves.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  ak_compile_options(-falign-functions=16)
endif()
ak_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)

# A unique symbol pins the library that defines it for the life of the process; a bundle has to unload.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 warns of copies that overlap inside its own std::string (its bug 105329) and of comparisons of half the
  # address space inside its own std::vector.
  ak_compile_options(-fno-gnu-unique -Wno-restrict -Wno-stringop-overread)
endif()
if(AK_WERROR)
  ak_compile_options(-Werror)
endif()
if(AK_SANITIZE)
  ak_compile_options(-fsanitize=${AK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(ak_settings INTERFACE -fsanitize=${AK_SANITIZE})
  target_compile_definitions(ak_settings INTERFACE AK_SANITIZED)
  if(AK_SANITIZE MATCHES "address")
    target_sources(ak_settings INTERFACE
      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_CURRENT_LIST_DIR}/LeakSuppressions.cpp>)
  endif()
endif()
if(CMAKE_CXX_FLAGS MATCHES "--coverage")
  target_sources(ak_settings INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_CURRENT_LIST_DIR}/CoverageExit.cpp>)
  target_link_options(ak_settings INTERFACE $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-Wl,--wrap=_exit>)
endif()
if(AK_FUZZ)
  ak_compile_options(-fsanitize=fuzzer-no-link)
endif()

# clang compiles the headers that most sources include once for each target. g++ warns of what is in them then, and a
# compiler cache does not find what was compiled so.
set(precompile OFF)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(precompile ON)
endif()
option(AK_PRECOMPILE "Compile the headers that most sources include once" ${precompile})
function(ak_precompile target)
  if(AK_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE <algorithm> <functional> <map> <memory> <optional> <sstream> <string>
                              <vector> ${ARGN})
  endif()
endfunction()
