# What every target of the project is compiled with: warnings are errors in both builds.
add_library(quillet_options INTERFACE)
target_compile_features(quillet_options INTERFACE cxx_std_20)
target_include_directories(quillet_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(quillet_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wformat=2 -Wnon-virtual-dtor
  -Wundef -Wimplicit-fallthrough
  # GCC 12 takes any short text put into a string at -O3 for an overlap, hence -Wno-restrict.
  "$<$<CXX_COMPILER_ID:GNU>:-Wlogical-op;-Wduplicated-cond;-Wsuggest-override;-Wno-restrict>")
if(WIN32)
  target_compile_definitions(quillet_options INTERFACE
    UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT WINVER=0x0A00 _WIN32_WINNT=0x0A00 _WIN32_IE=0x0A00)
  target_compile_options(quillet_options INTERFACE -ffunction-sections -fdata-sections)
  # Sections at whole pages of the file can be mapped as they are; others are copied into memory under Wine.
  # Without the time of linking the same sources make the same bytes.
  target_link_options(quillet_options INTERFACE
    -static -Wl,--gc-sections -Wl,--file-alignment,0x1000 -Wl,--no-insert-timestamp)
endif()

option(QUILLET_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(QUILLET_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

option(QUILLET_FUZZ "Build the fuzz targets and nothing else that runs; needs clang" OFF)
if(QUILLET_FUZZ)
  # Dictionaries know the words that matter; watching every comparison as well would halve the speed.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()
