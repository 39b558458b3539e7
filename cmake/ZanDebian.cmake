# The Debian packages libzan18 and libzan-dev, which `./dev deb` makes: their files besides the installation, and CPack's
# settings.
set(runtime_package "libzan${PROJECT_VERSION_MAJOR}")
set(dev_package "libzan-dev")
set(debian_version "${PROJECT_VERSION}-1")
set(maintainer "The Zan maintainers <maintainers@zan.example>")
string(TIMESTAMP debian_date "%a, %d %b %Y %H:%M:%S +0000" UTC)

# Without the stack protector, which Debian's flags ask for: in these files it protects only structures and pairs that are
# accessed at constant offsets or by a condition, which cannot overflow, and makes short operations 10 to 30 % slower.
set_source_files_properties(poly/convexity.cpp space/lines.cpp TARGET_DIRECTORY zan_objects
                            PROPERTIES COMPILE_OPTIONS -fno-stack-protector)

# Compresses a file, without its date and name, so that the packages are reproducible.
function(zan_compress from to)
  execute_process(COMMAND gzip -9nc "${from}" OUTPUT_FILE "${to}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

configure_file(packaging/changelog.Debian.in changelog.Debian @ONLY)
zan_compress("${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian" "${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz")
zan_compress("${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md" "${CMAKE_CURRENT_BINARY_DIR}/changelog.gz")
foreach(component IN ITEMS runtime dev)
  set(package "${${component}_package}")
  install(FILES packaging/copyright "${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz"
                "${CMAKE_CURRENT_BINARY_DIR}/changelog.gz"
          DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}" COMPONENT ${component})
  install(FILES "packaging/${component}.lintian-overrides" RENAME "${package}" COMPONENT ${component}
          DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides")
endforeach()

zan_compress("${CMAKE_CURRENT_SOURCE_DIR}/tools/selfcheck/zan-selfcheck.1" "${CMAKE_CURRENT_BINARY_DIR}/zan-selfcheck.1.gz")
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/zan-selfcheck.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT dev)

# gdb loads this script by itself when it loads the library.
file(CONFIGURE OUTPUT auto-load.py CONTENT "gdb.execute(\"source @CMAKE_INSTALL_FULL_DATADIR@/zan/zan_gdb.py\")\n" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/auto-load.py"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}" COMPONENT dev
        RENAME "libzan.so.${PROJECT_VERSION}-gdb.py")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zan)
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has a description of its own
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SOURCE zan)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_CURRENT_BINARY_DIR}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
file(CONFIGURE OUTPUT triggers CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_BINARY_DIR}/triggers")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "arithmetic and geometry for image layers in 2D and 3D
Fixed point and ratios, points and rectangles, matrices, planes and rays,
layer outlines, hit tests, hulls and clipping, for applications that place
image layers in space and show them on a screen. Every answer is defined to
the last bit.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME "${dev_package}")
set(CPACK_DEBIAN_DEV_PACKAGE_SOURCE zan)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${runtime_package} (= ${debian_version})")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "cmake, gdb, pkgconf")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "arithmetic and geometry for image layers - development files
For building programs with zan: headers, files for CMake and pkg-config,
documentation of its conventions and reports, a script by which gdb shows its
records, and a program that checks that this machine gives the same bits as
every other.")
include(CPack)
