# What is installed, and the packages by which other projects find it.

set(LER_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/rsvp-ler)
set(LER_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/RsvpLerCliCapi)

# ler_publish(NAME BASE headers...): the shared library NAME is installed with these headers, which its users include by
# their paths below BASE, and is known to CMake as RsvpLer::NAME, here and where it is installed.
function(ler_publish NAME BASE)
   add_library(RsvpLer::${NAME} ALIAS ${NAME})
   target_sources(${NAME} PUBLIC FILE_SET HEADERS BASE_DIRS ${BASE} FILES ${ARGN})
   target_compile_features(${NAME} PUBLIC cxx_std_20)
   # While the major version is 0, each minor version has its own binary interface.
   set_target_properties(${NAME} PROPERTIES VERSION ${PROJECT_VERSION}
                                            SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
                                            INSTALL_RPATH "\$ORIGIN")
   install(TARGETS ${NAME} EXPORT RsvpLerCliCapiTargets FILE_SET HEADERS DESTINATION ${LER_INSTALL_INCLUDEDIR})
endfunction()

include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/RsvpLerCliCapiConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/RsvpLerCliCapiConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/RsvpLerCliCapiConfigVersion.cmake
        DESTINATION ${LER_INSTALL_CMAKEDIR})
install(EXPORT RsvpLerCliCapiTargets NAMESPACE RsvpLer:: DESTINATION ${LER_INSTALL_CMAKEDIR})

# The file finds its prefix by where it lies, so that a staged or a moved tree serves too.
file(RELATIVE_PATH LER_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${CMAKE_CURRENT_LIST_DIR}/RsvpLerCliCapi.pc.in RsvpLerCliCapi.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/RsvpLerCliCapi.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
