# Sources that are compiled together, so that the headers of the libraries are read once for many.

# batch_by_folder(TARGET SIZE file...): the files of a folder share a translation unit, at most SIZE of them; a new file
# moves no file of another folder.
function(batch_by_folder target size)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  set(last "")
  set(place 0)
  foreach(file IN LISTS ARGN)
    get_filename_component(folder ${file} DIRECTORY)
    if(NOT folder STREQUAL last)
      set(last ${folder})
      set(place 0)
    endif()
    math(EXPR batch "${place} / ${size}")
    file(RELATIVE_PATH room ${PROJECT_SOURCE_DIR} ${folder})
    string(MAKE_C_IDENTIFIER "${room}_${batch}" group)
    set_source_files_properties(${file} PROPERTIES UNITY_GROUP ${group})
    math(EXPR place "${place} + 1")
  endforeach()
endfunction()
