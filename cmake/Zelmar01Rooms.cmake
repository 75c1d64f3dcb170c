# What every room, tool and test of this project is built with.

# Language level, warnings and sanitizers of one of our own targets.
function(zelmar01_settings target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
        -Woverloaded-virtual
        # g++ 12 sees an overlap in any text that is put before a std::string.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
        $<$<BOOL:${ZELMAR01_WERROR}>:-Werror>)
    if(ZELMAR01_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${ZELMAR01_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${ZELMAR01_SANITIZE})
    endif()
endfunction()

# Qt's compilers for a target that stands on Qt.
function(zelmar01_qt_settings target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
endfunction()

# While the major number is 0, each minor one may change what programs were linked with.
set(ZELMAR01_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

# zelmar01_room(name [PLAIN] HEADERS ... SOURCES ... NEEDS rooms... PACKAGES "Qt6 COMPONENTS Core" ...
#               LINK public libraries... LINK_PRIVATE libraries...)
#
# One room: the library Zelmar01::name, its public headers under the repository root as include root, its
# installation, its entry in the CMake package, where it is the component of the same name, and its pkg-config
# file zelmar01-name. PACKAGES are what a user of the installed room must find, one find_package call each.
# PLAIN rooms know no Qt.
#
# What is installed belongs to one of the components runtime, devel, tools and designer, each a package of its
# own (Zelmar01Packages.cmake).
function(zelmar01_room name)
    cmake_parse_arguments(ROOM "PLAIN" "" "HEADERS;SOURCES;NEEDS;PACKAGES;LINK;LINK_PRIVATE" ${ARGN})
    set(target Zelmar01_${name})
    add_library(${target} ${ROOM_SOURCES})
    add_library(Zelmar01::${name} ALIAS ${target})
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${ROOM_HEADERS})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${ZELMAR01_SOVERSION}
        WINDOWS_EXPORT_ALL_SYMBOLS ON
        POSITION_INDEPENDENT_CODE ON)
    zelmar01_settings(${target})
    if(NOT ROOM_PLAIN)
        zelmar01_qt_settings(${target})
    endif()
    list(TRANSFORM ROOM_NEEDS PREPEND Zelmar01:: OUTPUT_VARIABLE needs)
    target_link_libraries(${target} PUBLIC ${needs} ${ROOM_LINK} PRIVATE ${ROOM_LINK_PRIVATE})
    install(TARGETS ${target} EXPORT Zelmar01-${name}
        RUNTIME COMPONENT runtime
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT devel
        ARCHIVE COMPONENT devel
        FILE_SET HEADERS COMPONENT devel)
    install(EXPORT Zelmar01-${name} NAMESPACE Zelmar01::
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zelmar01 COMPONENT devel)
    zelmar01_pkg_config(${name})

    list(TRANSFORM ROOM_HEADERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set_property(GLOBAL APPEND PROPERTY ZELMAR01_HEADERS ${ROOM_HEADERS})
    set_property(GLOBAL APPEND PROPERTY ZELMAR01_ROOMS ${name})
    string(REPLACE ";" " " needsWords "${ROOM_NEEDS}")
    string(APPEND entry "set(_Zelmar01_${name}_NEEDS ${needsWords})\n"
                        "set(_Zelmar01_${name}_PACKAGES")
    foreach(package IN LISTS ROOM_PACKAGES)
        string(APPEND entry " \"${package}\"")
    endforeach()
    set_property(GLOBAL APPEND_STRING PROPERTY ZELMAR01_ROOM_TABLE "${entry})\n")
endfunction()

# The file by which pkg-config finds a room, relative to where it is, so that the whole installation can be moved.
# Reads the arguments of zelmar01_room.
function(zelmar01_pkg_config room)
    set(place ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${place}
               OUTPUT_VARIABLE PREFIX)
    set(REQUIRES)
    foreach(need IN LISTS ROOM_NEEDS)
        list(APPEND REQUIRES zelmar01-${need})
    endforeach()
    set(LIBRARIES)
    foreach(library IN LISTS ROOM_LINK ROOM_LINK_PRIVATE)
        if(library MATCHES "^Qt6::(.*)")
            list(APPEND REQUIRES Qt6${CMAKE_MATCH_1})
        elseif(library STREQUAL "Cups::Cups")
            string(APPEND LIBRARIES " -lcups")
        elseif(NOT library MATCHES "^\\$<") # generator expressions: libraries of other systems
            string(APPEND LIBRARIES " -l${library}")
        endif()
    endforeach()
    list(JOIN REQUIRES ", " REQUIRES)
    if(BUILD_SHARED_LIBS) # a shared library brings what it alone needs
        set(LIBRARIES)
    endif()
    set(ROOM ${room})
    set(file ${PROJECT_BINARY_DIR}/pkgconfig/zelmar01-${room}.pc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/zelmar01-room.pc.in ${file} @ONLY)
    install(FILES ${file} DESTINATION ${place} COMPONENT devel)
endfunction()

# Installs the CMake package that find_package(Zelmar01 COMPONENTS ...) reads.
function(zelmar01_install_package)
    include(CMakePackageConfigHelpers)
    get_property(ZELMAR01_ROOMS GLOBAL PROPERTY ZELMAR01_ROOMS)
    get_property(ZELMAR01_ROOM_TABLE GLOBAL PROPERTY ZELMAR01_ROOM_TABLE)
    set(place ${CMAKE_INSTALL_LIBDIR}/cmake/Zelmar01)
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/Zelmar01Config.cmake.in
        ${PROJECT_BINARY_DIR}/Zelmar01Config.cmake INSTALL_DESTINATION ${place})
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/Zelmar01ConfigVersion.cmake
        COMPATIBILITY SameMinorVersion)
    install(FILES ${PROJECT_BINARY_DIR}/Zelmar01Config.cmake
                  ${PROJECT_BINARY_DIR}/Zelmar01ConfigVersion.cmake
            DESTINATION ${place} COMPONENT devel)
endfunction()
