# The library: one set of objects, linked into the shared product and, for the tests of internals,
# into a static library that is not installed.
file(GLOB zor_sources CONFIGURE_DEPENDS
  zorutils/core/*.cpp zorutils/zortext/*.cpp zorutils/formats/*.cpp zorutils/fs/*.cpp
  zorutils/xml/*.cpp zorutils/zorsys/*.cpp zorutils/platform/*.cpp)
if(WIN32)
  file(GLOB zor_platform_sources CONFIGURE_DEPENDS zorutils/platform/windows/*.cpp)
else()
  file(GLOB zor_platform_sources CONFIGURE_DEPENDS zorutils/platform/posix/*.cpp)
endif()

if(WIN32)
  # Structured exception frames are known to clang, which compiles this one file for them.
  find_program(ZOR_CLANG NAMES clang clang-14 REQUIRED)
  set(zor_seh_source ${CMAKE_SOURCE_DIR}/zorutils/platform/windows/seh_frames.c)
  set(zor_seh_object ${CMAKE_BINARY_DIR}/seh_frames.obj)
  add_custom_command(OUTPUT ${zor_seh_object}
    COMMAND ${ZOR_CLANG} --target=x86_64-w64-windows-gnu --sysroot=/usr/x86_64-w64-mingw32
      -fms-extensions -std=c11 -O2 -Wall -Wextra $<$<BOOL:${ZOR_WARNINGS_AS_ERRORS}>:-Werror>
      -c ${zor_seh_source} -o ${zor_seh_object}
    DEPENDS ${zor_seh_source} zorutils/platform/windows/seh_frames.h VERBATIM)
  set_source_files_properties(${zor_seh_object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
  add_custom_target(zor_seh DEPENDS ${zor_seh_object})
endif()

# The platform layer's own objects, so that its contract tests can link them without the library.
add_library(zor_objects OBJECT ${zor_sources} ${zor_platform_sources})
target_compile_definitions(zor_objects PRIVATE ZOR_BUILDING)
target_link_libraries(zor_objects PUBLIC zor_options PRIVATE zor_warnings)
if(NOT WIN32)
  # The library's calls of its own exported functions are its own, as in a DLL: no other module
  # replaces them, so the compiler may inline them and the linker may bind them. Its few bytes of
  # each thread are there from the thread's start: a fault must not have them made.
  target_compile_options(zor_objects PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fno-semantic-interposition>
    -ftls-model=initial-exec)
endif()

# The private heap: the published allocator under the library's settings. A linked git worktree
# shares the file with its main checkout.
set(zor_dlmalloc ${ZOR_DLMALLOC_SOURCE})
if(NOT EXISTS "${zor_dlmalloc}")
  execute_process(COMMAND git rev-parse --path-format=absolute --git-common-dir
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE zor_git_folder
    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  foreach(candidate "$ENV{ZOR_DLMALLOC_SOURCE}" "${zor_git_folder}/../.cache/dlmalloc/malloc.c")
    if(EXISTS "${candidate}")
      set(zor_dlmalloc ${candidate})
    endif()
  endforeach()
endif()
if(NOT EXISTS "${zor_dlmalloc}")
  message(FATAL_ERROR "dlmalloc is missing: run scripts/fetch_dlmalloc.sh, or set ZOR_DLMALLOC_SOURCE")
endif()
target_sources(zor_objects PRIVATE zorutils/zorsys/dlmalloc_settings.c)
# Not ours to change: its warnings stay silent, and its walks over raw memory aren't checked.
set_source_files_properties(zorutils/zorsys/dlmalloc_settings.c PROPERTIES
  COMPILE_DEFINITIONS "ZOR_DLMALLOC_SOURCE=\"${zor_dlmalloc}\""
  COMPILE_OPTIONS "-w;-fno-sanitize=address,undefined"
  OBJECT_DEPENDS "${zor_dlmalloc}")

if(NOT WIN32)
  target_sources(zor_objects PRIVATE zorutils/platform/posix/fault_heap.c)
  set_source_files_properties(zorutils/platform/posix/fault_heap.c PROPERTIES
    COMPILE_DEFINITIONS "ZOR_DLMALLOC_SOURCE=\"${zor_dlmalloc}\""
    COMPILE_OPTIONS "-w;-fno-sanitize=address,undefined,thread"
    OBJECT_DEPENDS "${zor_dlmalloc}")
  # The library's own calls for memory, by way of zorutils/platform/posix/fault_memory.cpp.
  foreach(name malloc calloc realloc free _Znwm _Znam _ZnwmRKSt9nothrow_t _ZdlPv _ZdaPv _ZdlPvm
      _ZdaPvm)
    list(APPEND zor_memory_options -Wl,--wrap=${name})
  endforeach()
endif()

# Boost: Debian's packages, and for Windows the same version built by scripts/fetch_boost.sh.
set(Boost_NO_BOOST_CMAKE ON)
if(WIN32)
  set(BOOST_ROOT "${CMAKE_SOURCE_DIR}/.cache/boost" CACHE PATH "Boost for Windows")
  set(CMAKE_FIND_ROOT_PATH "${CMAKE_FIND_ROOT_PATH};${BOOST_ROOT}")
endif()
find_package(Boost 1.74 REQUIRED COMPONENTS filesystem thread)
target_link_libraries(zor_objects PUBLIC Boost::headers Boost::filesystem Boost::thread)

set(zor_system_libraries Boost::filesystem Boost::thread)
if(WIN32)
  list(APPEND zor_system_libraries oleaut32 ole32 shell32 user32 gdi32 advapi32 dbghelp)
else()
  find_package(ICU 60 REQUIRED COMPONENTS uc i18n data)
  find_package(Threads REQUIRED)
  list(APPEND zor_system_libraries ICU::uc ICU::i18n Threads::Threads ${CMAKE_DL_LIBS})
  target_link_libraries(zor_objects PRIVATE ICU::uc)
endif()

add_library(zorutils SHARED $<TARGET_OBJECTS:zor_objects> ${zor_seh_object})
# The threads' class is one of Boost's.
target_link_libraries(zorutils PUBLIC zor_options Boost::headers Boost::thread
  PRIVATE ${zor_system_libraries})
if(WIN32)
  set_target_properties(zorutils PROPERTIES PREFIX "")
  add_dependencies(zorutils zor_seh)
endif()
set_target_properties(zorutils PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
if(NOT WIN32)
  # No function is looked up for the first time while a fault is handled.
  target_link_options(zorutils PRIVATE -Wl,-Bsymbolic-functions -Wl,-z,now ${zor_memory_options})
endif()
if(NOT WIN32 AND NOT ZOR_SANITIZE)
  target_link_options(zorutils PRIVATE -Wl,--no-undefined)
endif()
if(NOT WIN32)
  target_link_options(zorutils PRIVATE -Wl,--version-script=${CMAKE_SOURCE_DIR}/cmake/exports.map)
endif()

add_library(zorutils_internal STATIC $<TARGET_OBJECTS:zor_objects> ${zor_seh_object})
target_link_options(zorutils_internal INTERFACE ${zor_memory_options})
target_compile_definitions(zorutils_internal INTERFACE ZOR_STATIC)
target_link_libraries(zorutils_internal PUBLIC zor_options ${zor_system_libraries})

if(WIN32)
  # The compiler's run-time libraries lie beside the programs, as an installer would lay them.
  foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
      OUTPUT_VARIABLE dll_path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${dll_path}")
      find_file(dll_path_${dll} ${dll} PATHS /usr/x86_64-w64-mingw32/lib
        NO_CMAKE_FIND_ROOT_PATH REQUIRED)
      set(dll_path ${dll_path_${dll}})
    endif()
    file(COPY ${dll_path} DESTINATION ${CMAKE_BINARY_DIR}/bin)
  endforeach()
  foreach(name chrono filesystem thread)
    file(COPY ${BOOST_ROOT}/lib/libboost_${name}.dll DESTINATION ${CMAKE_BINARY_DIR}/bin)
  endforeach()
endif()
