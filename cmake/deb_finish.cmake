# Run by CPack (CPACK_PRE_BUILD_SCRIPTS, cmake/ZelkoraPackage.cmake) on the
# installed trees of the Debian packages, one folder per package below
# CPACK_TEMPORARY_DIRECTORY, before they are packed. Adds what Debian's
# policy asks of every package: /usr/share/doc/<package>/copyright and
# changelog.Debian.gz; compresses the manual pages (gzip -9n, no name or
# time stamp); takes the debugging sections out of the static libraries
# (CPACK_STRIP_FILES strips the programs only) and the compiler's notes out
# of both.
find_program(ZK_GZIP gzip REQUIRED)
find_program(ZK_STRIP strip REQUIRED)
set(ZK_DEB_VERSION "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(ZK_DEB_MAINTAINER "${CPACK_ZK_MAINTAINER}")

function(zk_gzip file)
  execute_process(COMMAND ${ZK_GZIP} -9nf ${file} RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "gzip ${file} failed")
  endif()
endfunction()

file(GLOB trees LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(tree ${trees})
  if(NOT IS_DIRECTORY ${tree}/usr)
    continue()
  endif()
  get_filename_component(component ${tree} NAME)
  string(TOUPPER ${component} upper)
  set(package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  if(NOT package)
    message(FATAL_ERROR "no package name for the component ${component}")
  endif()

  set(doc ${tree}/usr/share/doc/${package})
  file(MAKE_DIRECTORY ${doc})
  file(COPY_FILE ${CPACK_ZK_PACKAGING_DIR}/copyright ${doc}/copyright)
  configure_file(${CPACK_ZK_PACKAGING_DIR}/changelog.in ${doc}/changelog.Debian @ONLY)
  zk_gzip(${doc}/changelog.Debian)

  # The package's lintian overrides, where it has any (with the reasons).
  if(EXISTS ${CPACK_ZK_PACKAGING_DIR}/${package}.lintian-overrides)
    file(MAKE_DIRECTORY ${tree}/usr/share/lintian/overrides)
    file(COPY_FILE ${CPACK_ZK_PACKAGING_DIR}/${package}.lintian-overrides
         ${tree}/usr/share/lintian/overrides/${package})
  endif()

  file(GLOB_RECURSE pages ${tree}/usr/share/man/*.[1-9])
  foreach(page ${pages})
    zk_gzip(${page})
  endforeach()

  # As Debian's dh_strip does: the archives keep their symbols, the
  # programs (already stripped) lose their compiler notes too.
  file(GLOB_RECURSE archives ${tree}/usr/lib/*.a)
  file(GLOB programs ${tree}/usr/bin/*)
  foreach(binary ${archives} ${programs})
    set(how --remove-section=.comment --remove-section=.note)
    if(binary MATCHES "\\.a$")
      list(APPEND how --strip-debug --enable-deterministic-archives)
    endif()
    execute_process(COMMAND ${ZK_STRIP} ${how} ${binary} RESULT_VARIABLE failed)
    if(failed)
      message(FATAL_ERROR "strip ${binary} failed")
    endif()
  endforeach()

  # Every folder and file as Debian has them, whatever the umask: 0755
  # folders, 0644 files, 0755 programs.
  file(GLOB_RECURSE entries LIST_DIRECTORIES true ${tree}/usr/*)
  foreach(entry ${entries})
    if(IS_SYMLINK ${entry})
      continue()
    elseif(IS_DIRECTORY ${entry} OR entry MATCHES "/usr/bin/[^/]+$")
      file(CHMOD ${entry} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
           WORLD_READ WORLD_EXECUTE)
    else()
      file(CHMOD ${entry} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    endif()
  endforeach()
endforeach()
