include(CMakePackageConfigHelpers)

install(TARGETS TuvHost TuvKelBIWUtils TuvEmbeddedHost EXPORT TuvKelBIWUtilsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
file(RELATIVE_PATH TUV_BINDIR_TO_LIBDIR /prefix/${CMAKE_INSTALL_BINDIR}
     /prefix/${CMAKE_INSTALL_LIBDIR})
set_target_properties(biwplan PROPERTIES INSTALL_RPATH "$ORIGIN/${TUV_BINDIR_TO_LIBDIR}")
set_target_properties(tuv-host-check PROPERTIES INSTALL_RPATH "$ORIGIN/${TUV_BINDIR_TO_LIBDIR}")
set_target_properties(TuvKelBIWUtils TuvEmbeddedHost PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS biwplan tuv-host-check RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS TuvHostCheck EXPORT TuvKelBIWUtilsTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT HostCheck)
install(FILES hostcheck/HostCheck.h COMPONENT HostCheck
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TuvKelBIWUtils/hostcheck)
foreach(room host frame services visu manufassly embedded)
  install(DIRECTORY ${room} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TuvKelBIWUtils
          FILES_MATCHING PATTERN "*.h")
endforeach()
install(DIRECTORY resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/TuvKelBIWUtils)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TuvKelBIWUtils)
install(EXPORT TuvKelBIWUtilsTargets NAMESPACE TuvKelBIWUtils:: DESTINATION ${package_dir})
configure_package_config_file(cmake/TuvKelBIWUtilsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfig.cmake
              ${PROJECT_BINARY_DIR}/TuvKelBIWUtilsConfigVersion.cmake
        DESTINATION ${package_dir})

# The installed tree can be moved: nothing in it names its place.
file(RELATIVE_PATH TUV_LIBDIR_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR} /prefix)
configure_file(cmake/TuvKelBIWUtils.pc.in ${PROJECT_BINARY_DIR}/TuvKelBIWUtils.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/TuvKelBIWUtils.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
