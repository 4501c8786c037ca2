# The target exports what the file lists: of a class its members, vtable and type information, of
# functions, whose names end with (), all that begin so, and data by name. Templates of the standard
# library and of others, visible wherever they are instantiated, stay inside.
function(tuv_export target file)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(STRINGS ${file} names)
  set(patterns "")
  foreach(name IN LISTS names)
    if(name MATCHES "[(][)]$")
      string(REPLACE "()" "?*" exported "${name}")
    else()
      set(exported "${name}" "${name}::*" "vtable?for?${name}" "typeinfo?for?${name}"
                   "typeinfo?name?for?${name}" "*thunk?to?${name}::*")
    endif()
    list(TRANSFORM exported PREPEND "      ")
    list(TRANSFORM exported APPEND "\;\n")
    string(APPEND patterns ${exported})
  endforeach()
  set(map ${PROJECT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${map} CONTENT
       "{\n  global:\n    extern \"C++\" {\n@patterns@    };\n  local:\n    *;\n};\n" @ONLY)
  target_compile_options(${target} PRIVATE -fvisibility-inlines-hidden)
  target_link_options(${target} PRIVATE LINKER:--version-script=${map})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
endfunction()
