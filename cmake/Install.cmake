include(CMakePackageConfigHelpers)

file(RELATIVE_PATH TUV_BINDIR_TO_LIBDIR /prefix/${CMAKE_INSTALL_BINDIR}
     /prefix/${CMAKE_INSTALL_LIBDIR})
set_target_properties(biwplan PROPERTIES INSTALL_RPATH "$ORIGIN/${TUV_BINDIR_TO_LIBDIR}")
set_target_properties(tuv-host-check PROPERTIES INSTALL_RPATH "$ORIGIN/${TUV_BINDIR_TO_LIBDIR}")
install(TARGETS biwplan tuv-host-check RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The headers that others may include; those of host/ are meant for it, but for one.
file(GLOB_RECURSE headers RELATIVE ${PROJECT_SOURCE_DIR} host/*.h)
list(REMOVE_ITEM headers host/loading/LibraryFile.h)
file(STRINGS cmake/public-headers.txt others)
foreach(header IN LISTS headers others)
  cmake_path(GET header PARENT_PATH room)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TuvKelBIWUtils/${room})
endforeach()
install(DIRECTORY resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/TuvKelBIWUtils)

# The installed tree can be moved: nothing in it names its place.
file(RELATIVE_PATH TUV_LIBDIR_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR} /prefix)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TuvKelBIWUtils)

# A library as a component of the package, with a description for pkg-config: what it is, what it
# needs, and the words that link it.
function(tuv_install component target description requires link)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${target} EXPORT TuvKelBIWUtils${component}
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT TuvKelBIWUtils${component} NAMESPACE TuvKelBIWUtils:: DESTINATION ${package_dir})
  configure_file(cmake/library.pc.in ${PROJECT_BINARY_DIR}/${target}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${target}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# Who only switches the update on names nothing of the library: it is linked all the same.
tuv_install(Host TuvHost "The interfaces of a host that plans body-in-white welds" "" "-lTuvHost")
tuv_install(Library TuvKelBIWUtils "Body-in-white weld planning" TuvHost
            "-Wl,--push-state,--no-as-needed -lTuvKelBIWUtils -Wl,--pop-state")
tuv_install(EmbeddedHost TuvEmbeddedHost "An in-memory host for body-in-white weld planning" TuvHost
            "-lTuvEmbeddedHost")
tuv_install(HostCheck TuvHostCheck "Checks of a host of one's own" TuvHost "-lTuvHostCheck")
target_link_options(
  TuvKelBIWUtils INTERFACE
  "$<INSTALL_INTERFACE:LINKER:--push-state,--no-as-needed,$<TARGET_FILE:TuvKelBIWUtils::TuvKelBIWUtils>,--pop-state>")

configure_package_config_file(cmake/TuvKelBIWUtilsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfig.cmake
              ${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfigVersion.cmake
        DESTINATION ${package_dir})
