# Compiler options shared by the library, its tests and its programs.
add_library(zor_options INTERFACE)
target_include_directories(zor_options INTERFACE
  $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}> $<INSTALL_INTERFACE:include>)
target_compile_features(zor_options INTERFACE cxx_std_17)

add_library(zor_warnings INTERFACE)
target_compile_options(zor_warnings INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow>
  $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${ZOR_WARNINGS_AS_ERRORS}>>:-Werror>)

if(ZOR_SANITIZE)
  # Not recoverable: a report fails the test that made it.
  add_compile_options(-fsanitize=${ZOR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZOR_SANITIZE})
endif()

if(WIN32)
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  # The library's formatters have Microsoft's rules: MinGW's replacements stay out of the way.
  add_compile_definitions(__USE_MINGW_ANSI_STDIO=0)
endif()
