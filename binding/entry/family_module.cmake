# Extension modules: sources in, one shared object out.

# Thousands of records hold pointers to texts and forms: packed, their relocations are a twentieth of the size.
include(CheckLinkerFlag)
check_linker_flag(CXX -Wl,-z,pack-relative-relocs HYX_PACKED_RELOCATIONS)

# add_family_module(NAME SOURCES file... [TYPES target] [FOLDER folder]): the rows that its sources publish (see ROWS in
# vocabulary/rows.h) become its functions. TYPES are the module's type tables.
function(add_family_module name)
  cmake_parse_arguments(module "" "TYPES;FOLDER" "SOURCES" ${ARGN})
  if(NOT module_TYPES)
    set(module_TYPES catalogue)
  endif()
  if(NOT module_FOLDER)
    set(module_FOLDER ${HYX_IMPORT_ROOT})
  endif()

  add_library(${name} MODULE ${module_SOURCES} $<TARGET_OBJECTS:binding> $<TARGET_OBJECTS:runtime>
    $<TARGET_OBJECTS:${module_TYPES}>)
  target_compile_options(${name} PRIVATE -fvisibility=hidden)
  target_link_libraries(${name} PRIVATE ${module_TYPES} binding hyx_reference)
  if(HYX_PACKED_RELOCATIONS)
    target_link_options(${name} PRIVATE -Wl,-z,pack-relative-relocs)
  endif()
  target_link_options(${name} PRIVATE -Wl,--gc-sections -Wl,--version-script=${PROJECT_SOURCE_DIR}/binding/entry/exports.map)
  set_target_properties(${name} PROPERTIES
    PREFIX "" SUFFIX ".${Python_SOABI}.so"
    LIBRARY_OUTPUT_DIRECTORY ${module_FOLDER}
    BUILD_RPATH "\$ORIGIN" INSTALL_RPATH "\$ORIGIN")
  if(module_FOLDER STREQUAL HYX_IMPORT_ROOT)
    set_property(GLOBAL APPEND PROPERTY HYX_MODULES ${name})
  endif()
endfunction()
