# cmake --install: the library, the public headers, pkg-config and a CMake package.
include(CMakePackageConfigHelpers)

set(KEL_INSTALLED_LIBRARIES basalt)
if(TARGET kelservices)
    list(APPEND KEL_INSTALLED_LIBRARIES kelservices)
endif()
# Installed libraries and programs find the installed libraries relative to themselves, so an
# installation runs wherever it lands, without ldconfig or LD_LIBRARY_PATH.
file(RELATIVE_PATH KEL_BINDIR_TO_LIBDIR ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(${KEL_INSTALLED_LIBRARIES} PROPERTIES INSTALL_RPATH "$ORIGIN")
if(TARGET kelpick)
    set_target_properties(kelpick PROPERTIES INSTALL_RPATH "$ORIGIN/${KEL_BINDIR_TO_LIBDIR}")
endif()

install(TARGETS ${KEL_INSTALLED_LIBRARIES} EXPORT KelServicesTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT KelServicesTargets NAMESPACE KelServices::
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KelServices)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KelServicesConfig.cmake.in
    ${CMAKE_BINARY_DIR}/KelServicesConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KelServices)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/KelServicesConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/KelServicesConfig.cmake
    ${CMAKE_BINARY_DIR}/KelServicesConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KelServices)

configure_file(${PROJECT_SOURCE_DIR}/cmake/kelservices.pc.in ${CMAKE_BINARY_DIR}/kelservices.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/kelservices.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
