# The Debian package that cpack makes of what is installed (scripts/package).

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rsvp-show)
set(CPACK_PACKAGE_CONTACT "rsvp-show maintainers <rsvp-show@localhost>" CACHE STRING "Maintainer of the Debian package")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_DESCRIPTION
    "The program lershow shows tunnels and status as aligned text or as JSON,
from a state file or from a live router. The library RsvpLerCliCapi, with
its headers, does so for the tables of another program.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
