# What `cmake --install` puts where.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(programs ${WAGONS_PROGRAMS} ${WAGONS_PLANTS} ${WAGONS_CONTROLLERS})
install(TARGETS ${programs})
list(TRANSFORM programs REPLACE ".+" "packaging/man/\\0.1" OUTPUT_VARIABLE pages)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
list(TRANSFORM programs REPLACE ".+" "packaging/man/fr/\\0.1" OUTPUT_VARIABLE french_pages)
install(FILES ${french_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/fr/man1)

set(completions ${CMAKE_CURRENT_BINARY_DIR}/completions)
file(COPY packaging/completion/ DESTINATION ${completions})
foreach(program IN LISTS WAGONS_PROGRAMS)
  file(CREATE_LINK _wagons_options ${completions}/${program} SYMBOLIC)
endforeach()
foreach(plant IN LISTS WAGONS_PLANTS)
  file(CREATE_LINK _wagons_plant ${completions}/${plant} SYMBOLIC)
endforeach()
install(DIRECTORY ${completions}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

install(FILES ${english}/wagons.mo DESTINATION ${CMAKE_INSTALL_LOCALEDIR}/en/LC_MESSAGES)
install(DIRECTORY share/ DESTINATION ${CMAKE_INSTALL_DATADIR}/wagons OPTIONAL)

# The menu entry starts the mine with the reference controller.
install(FILES packaging/wagons.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/wagons.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
set(metainfo ${CMAKE_CURRENT_BINARY_DIR}/example.wagons.wagons.metainfo.xml)
configure_file(packaging/wagons.metainfo.xml.in ${metainfo} @ONLY)
install(FILES ${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# The headers keep their paths of the tree, so that a program compiles in and out of it alike.
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/wagons)
install(DIRECTORY bibliocpp DESTINATION ${headers} FILES_MATCHING PATTERN *.h)
install(FILES maquettes_graphiques/objgraphiques.h DESTINATION ${headers}/maquettes_graphiques)
install(DIRECTORY maquettes_graphiques/objgraphiques maquettes_graphiques/mock_up
        DESTINATION ${headers}/maquettes_graphiques FILES_MATCHING PATTERN *.h)

install(TARGETS ${WAGONS_LIBRARIES} EXPORT wagons INCLUDES DESTINATION ${headers})
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/wagons)
install(EXPORT wagons NAMESPACE wagons:: FILE wagonsTargets.cmake DESTINATION ${package})
write_basic_package_version_file(wagonsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/wagonsConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/wagonsConfigVersion.cmake
        DESTINATION ${package})

# pkg_config(<library> <what it is> <packages it needs> <other libraries it needs>): there are static libraries
# only, so all they need is named openly, not as private.
function(pkg_config library description requires libs)
  file(RELATIVE_PATH up /usr/${CMAKE_INSTALL_LIBDIR}/pkgconfig /usr)
  configure_file(packaging/wagons.pc.in wagons-${library}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/wagons-${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
pkg_config(bibliocpp "shared I/O area for plants and controllers" "" -pthread)
pkg_config(formspp "helpers for FLTK's forms" "wagons-bibliocpp, x11" "-lfltk_forms -lfltk")
pkg_config(objgraphiques "animated objects for mock-ups" wagons-formspp "")
pkg_config(mock_up "what every mock-up shares" wagons-objgraphiques "")
