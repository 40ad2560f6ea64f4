# The English texts, where the programs of the build find them: beside the folder that they are in.
include(GNUInstallDirs)
find_program(MSGFMT msgfmt REQUIRED)
cmake_path(SET locales NORMALIZE ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/../share/locale)
set(english ${locales}/en/LC_MESSAGES)
add_custom_command(OUTPUT ${english}/wagons.mo
  COMMAND ${CMAKE_COMMAND} -E make_directory ${english}
  COMMAND ${MSGFMT} --check-format --output-file=${english}/wagons.mo ${PROJECT_SOURCE_DIR}/po/en.po
  DEPENDS ${PROJECT_SOURCE_DIR}/po/en.po VERBATIM)
add_custom_target(catalogue ALL DEPENDS ${english}/wagons.mo)
