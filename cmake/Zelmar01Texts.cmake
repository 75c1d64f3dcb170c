# zelmar01.ts: the library's French texts, taken off the sources by lupdate. A host adds its language to a copy and
# loads what lrelease makes of it.
find_package(Qt6 QUIET COMPONENTS LinguistTools)
if(NOT TARGET Qt6::lupdate)
    message(STATUS "Qt's lupdate is missing: zelmar01.ts, the texts for translators, is not made")
    return()
endif()

set(ZELMAR01_TEXTS ${PROJECT_BINARY_DIR}/zelmar01.ts)
file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Zelmar01/*.h ${PROJECT_SOURCE_DIR}/Zelmar01/*.cpp)
add_custom_command(OUTPUT ${ZELMAR01_TEXTS}
    COMMAND ${CMAKE_COMMAND} -E rm -f ${ZELMAR01_TEXTS}
    COMMAND Qt6::lupdate -silent -locations none -source-language fr_FR -I ${PROJECT_SOURCE_DIR}
            -tr-function-alias translate+=Translate,QT_TRANSLATE_NOOP+=Translatable
            -recursive ${PROJECT_SOURCE_DIR}/Zelmar01 -ts ${ZELMAR01_TEXTS}
    DEPENDS ${sources}
    COMMENT "Collecting the texts for translators" VERBATIM)
add_custom_target(zelmar01_texts ALL DEPENDS ${ZELMAR01_TEXTS})
install(FILES ${ZELMAR01_TEXTS} DESTINATION ${CMAKE_INSTALL_DATADIR}/zelmar01 COMPONENT devel)
