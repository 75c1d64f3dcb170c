# The Debian packages that cpack makes: the shared libraries, what one develops with, and the tools.
set(library libzelmar01-${ZELMAR01_SOVERSION})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelmar01)
set(CPACK_PACKAGE_CONTACT "The Zelmar01 authors")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
get_property(rooms GLOBAL PROPERTY ZELMAR01_ROOMS)
foreach(room IN LISTS rooms)
    get_target_property(folder Zelmar01_${room} BINARY_DIR)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${folder})
endforeach()

# zelmar01_debian_package(component name SECTION ... DEPENDS ... RECOMMENDS ... DESCRIPTION ...)
macro(zelmar01_debian_package component name)
    cmake_parse_arguments(DEB "" "SECTION;DEPENDS;RECOMMENDS;DESCRIPTION" "" ${ARGN})
    string(TOUPPER ${component} upper)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${DEB_SECTION})
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${DEB_DEPENDS}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS "${DEB_RECOMMENDS}")
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${DEB_DESCRIPTION}")
    install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} RENAME copyright
            COMPONENT ${component})
endmacro()

set(exactly "${library} (= ${PROJECT_VERSION})")
zelmar01_debian_package(runtime ${library}
    SECTION libs
    RECOMMENDS "libqt6sql6-sqlite"
    DESCRIPTION "components for a shop's till and back office: libraries
 Receipt printers and the cash drawer, scheduled tasks, the tree of article codes, lists bound to keys, tabs and
 editors, for applications with Qt 6.")
zelmar01_debian_package(devel libzelmar01-dev
    SECTION libdevel
    DEPENDS "${exactly}, qt6-base-dev"
    DESCRIPTION "components for a shop's till and back office: development files
 Headers, CMake package, pkg-config files and texts for translators of the Zelmar01 libraries.")
zelmar01_debian_package(tools zelmar01-tools
    SECTION utils
    DEPENDS "${exactly}"
    DESCRIPTION "components for a shop's till and back office: tools
 zelmar01-print tries a receipt printer; zelmar01-jobs lists, makes, runs and ticks scheduled tasks.")
if(TARGET zelmar01_designer)
    zelmar01_debian_package(designer zelmar01-designer
        SECTION libdevel
        DEPENDS "${exactly}"
        RECOMMENDS "designer-qt6, libqt6svg6"
        DESCRIPTION "components for a shop's till and back office: plugin of the form designer
 Puts the Zelmar01 components into the widget box of Qt Designer.")
endif()
include(CPack)
