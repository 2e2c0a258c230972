# The Debian packages of `make package`, made by CPack's DEB generator from
# the install components (the files of the desktop integration are in
# packaging/linux/):
#
#   zelkora          component "programs": the tool zelkora, the desktop
#                    program zelkora-desk, its desktop entry, icon and the
#                    MIME type of the project data files, the manual pages
#   libzelkora-dev   components "zelkora" and "qt": the static libraries,
#                    the headers, the CMake package and the resources, which
#                    the CMake package names (zelkora_RESOURCE_DIR)
#
# The programs carry the resources compiled in and need nothing of
# libzelkora-dev. cmake/deb_finish.cmake completes each package's tree
# before it is packed: copyright, changelog.Debian.gz, compressed manual
# pages, static libraries without their debugging sections.
set(ZK_LINUX ${PROJECT_SOURCE_DIR}/packaging/linux)
install(FILES ${ZK_LINUX}/zelkora.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT programs)
if(TARGET zelkora_desk_app)
  install(TARGETS zelkora_desk_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT programs)
  install(FILES ${ZK_LINUX}/zelkora-desk.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT programs)
  install(FILES ${ZK_LINUX}/zelkora-desk.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT programs)
  install(FILES ${ZK_LINUX}/zelkora-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
          RENAME zelkora.xml COMPONENT programs)
  install(FILES ${ZK_LINUX}/icons/zelkora.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT programs)
  foreach(size 48 128 256)
    install(FILES ${ZK_LINUX}/icons/zelkora-${size}.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
            RENAME zelkora.png COMPONENT programs)
  endforeach()
endif()

# The installed programs are linked as Debian's hardening asks: their
# relocations read-only, resolved at start (full RELRO).
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  foreach(program zelkora_cli zelkora_desk_app)
    if(TARGET ${program})
      target_link_options(${program} PRIVATE LINKER:-z,relro,-z,now)
    endif()
  endforeach()
endif()

set(ZELKORA_PACKAGE_MAINTAINER "Zelkora developers <zelkora@example.org>"
    CACHE STRING "The Maintainer of the Debian packages")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelkora)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${ZELKORA_PACKAGE_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR}/deb)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL programs zelkora)
if(TARGET zelkora_qt)
  list(APPEND CPACK_COMPONENTS_ALL qt)
endif()
set(CPACK_COMPONENT_ZELKORA_GROUP dev)
set(CPACK_COMPONENT_QT_GROUP dev)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${ZELKORA_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME zelkora)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION science)
# Chinese text needs a CJK font; Qt's own dialogs speak Chinese with its translations.
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_RECOMMENDS
    "fonts-noto-cjk | fonts-wqy-microhei | fonts-wqy-zenhei, qt6-translations-l10n")
set(CPACK_DEBIAN_PROGRAMS_DESCRIPTION
    "structural design calculations to the Chinese codes
The Zelkora suite's desktop program zelkora-desk (Zelkora 结构快速设计)
designs reinforced concrete beams, spread footings and load combinations
in calculation forms and writes their reports (Word, PDF, RTF, HTML,
text). Project data files (.zks) open in their program's form from the
file manager.
.
The command-line tool zelkora runs the library's operations one at a
time: catalogue texts, number formats, checks, project data files, grid
layouts and reports.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libzelkora-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "zlib1g-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS "qt6-base-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "component library for structural design programs (development files)
Zelkora is the shared C++ component library of a suite of structural
design programs to the Chinese codes: catalogue texts and messages,
number formats, formula markup and reports, input checks, project data
files, property-grid forms and the program menu.
.
This package holds the static libraries libzelkora.a and libzelkora_qt.a
(the Qt 6 Widgets adapters), the headers, the CMake package
(find_package(zelkora COMPONENTS qt)) and the resources.")

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/deb_finish.cmake)
set(CPACK_ZK_PACKAGING_DIR ${ZK_LINUX})
set(CPACK_ZK_MAINTAINER ${ZELKORA_PACKAGE_MAINTAINER})
include(CPack)
