# Compiles an interface definition to NAME_h.h, NAME_i.c and NAME.tlb in ${QUILLON_IDL_DIR}.
set(QUILLON_IDL_DIR ${CMAKE_BINARY_DIR}/idl)
file(MAKE_DIRECTORY ${QUILLON_IDL_DIR})

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(QUILLON_WIDL ${WIDL} -m64)
else()
  set(QUILLON_WIDL ${WIDL} -m32)
endif()
# oaidl.idl comes with libwine-dev, stdole2.tlb with wine itself.
list(APPEND QUILLON_WIDL
  -I /usr/include/wine/wine/windows -I ${CMAKE_SOURCE_DIR}/include
  -L /usr/lib/i386-linux-gnu/wine/i386-windows -L /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
  -L ${QUILLON_IDL_DIR})

function(quillon_idl name file)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  set(base ${QUILLON_IDL_DIR}/${name})
  # An importing header includes the imported one under this name. Written only when it differs: all that
  # includes it would be compiled again after every configuration.
  file(CONFIGURE OUTPUT ${base}.h CONTENT "#include \"${name}_h.h\"\n" @ONLY)
  set(needs ${file})
  foreach(dep ${ARG_DEPENDS})
    list(APPEND needs ${QUILLON_IDL_DIR}/${dep}.tlb ${CMAKE_SOURCE_DIR}/include/${dep}.idl)
  endforeach()
  add_custom_command(
    OUTPUT ${base}_h.h ${base}_i.c ${base}.tlb
    COMMAND ${QUILLON_WIDL} -h -o ${base}_h.h ${file}
    COMMAND ${QUILLON_WIDL} -u -o ${base}_i.c ${file}
    COMMAND ${QUILLON_WIDL} -t -o ${base}.tlb ${file}
    DEPENDS ${needs}
    VERBATIM)
  add_custom_target(idl_${name} DEPENDS ${base}_h.h ${base}_i.c ${base}.tlb)
  foreach(dep ${ARG_DEPENDS})
    add_dependencies(idl_${name} idl_${dep})
  endforeach()
  # Interface and class identifiers; linking this also gives the generated headers.
  add_library(${name}_ids STATIC ${base}_i.c)
  add_dependencies(${name}_ids idl_${name})
  target_include_directories(${name}_ids SYSTEM INTERFACE ${QUILLON_IDL_DIR})
  foreach(dep ${ARG_DEPENDS})
    target_link_libraries(${name}_ids PUBLIC ${dep}_ids)
  endforeach()
endfunction()

quillon_idl(quorvex ${CMAKE_SOURCE_DIR}/include/quorvex.idl)
quillon_idl(quillon ${CMAKE_SOURCE_DIR}/include/quillon.idl)
