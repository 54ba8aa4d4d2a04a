# Modules with string resources, in the form that each target registers: DLLs without code on
# Windows, compiled .res files on Linux, and one DLL there too. The programs have resources of their
# own: linked into them on Windows, "<program>.res" beside them on Linux.
set(zor_res_folder ${CMAKE_BINARY_DIR}/bin)
if(WIN32)
  set(zor_res_compiler ${CMAKE_RC_COMPILER})
  set(zor_res_linker ${CMAKE_LINKER})
else()
  find_program(ZOR_WINDRES x86_64-w64-mingw32-windres REQUIRED)
  find_program(ZOR_PE_LINKER x86_64-w64-mingw32-ld REQUIRED)
  set(zor_res_compiler ${ZOR_WINDRES})
  set(zor_res_linker ${ZOR_PE_LINKER})
endif()

# zor_compile_resource(NAME FORMAT OUTPUT): compiles data/NAME.rc into the file OUTPUT.
function(zor_compile_resource name format output)
  add_custom_command(OUTPUT ${output}
    COMMAND ${zor_res_compiler} -O ${format} ${CMAKE_CURRENT_SOURCE_DIR}/data/${name}.rc ${output}
    DEPENDS data/${name}.rc VERBATIM)
endfunction()

# zor_resource_dll(NAME): makes bin/NAME.dll.
function(zor_resource_dll name)
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.o)
  zor_compile_resource(${name} coff ${object})
  add_custom_command(OUTPUT ${zor_res_folder}/${name}.dll
    COMMAND ${zor_res_linker} -shared --entry 0 -o ${zor_res_folder}/${name}.dll ${object}
    DEPENDS ${object} VERBATIM)
endfunction()

zor_resource_dll(strings_a)
if(WIN32)
  set(zor_res_ending dll)
  zor_resource_dll(strings_b)
  set(zor_program_object ${CMAKE_CURRENT_BINARY_DIR}/strings_program.o)
  zor_compile_resource(strings_program coff ${zor_program_object})
  set_source_files_properties(${zor_program_object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
else()
  set(zor_res_ending res)
  zor_compile_resource(strings_a res ${zor_res_folder}/strings_a.res)
  zor_compile_resource(strings_b res ${zor_res_folder}/strings_b.res)
  zor_compile_resource(strings_program res ${zor_res_folder}/zor_tests.res)
endif()
add_custom_target(zor_test_resources DEPENDS
  ${zor_res_folder}/strings_a.dll
  ${zor_res_folder}/strings_a.${zor_res_ending} ${zor_res_folder}/strings_b.${zor_res_ending})

foreach(program zor_tests zor_internal_tests)
  add_dependencies(${program} zor_test_resources)
  target_compile_definitions(${program} PRIVATE
    ZOR_TEST_STRINGS_A="${zor_res_folder}/strings_a.${zor_res_ending}"
    ZOR_TEST_STRINGS_B="${zor_res_folder}/strings_b.${zor_res_ending}"
    ZOR_TEST_STRINGS_A_DLL="${zor_res_folder}/strings_a.dll")
endforeach()
if(WIN32)
  target_sources(zor_tests PRIVATE ${zor_program_object})
else()
  target_sources(zor_tests PRIVATE ${zor_res_folder}/zor_tests.res)
endif()
