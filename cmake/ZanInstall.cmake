# Installation in two components: runtime (to run programs that use zan) and dev (to build them). All paths in installed
# files are relative, so the installation can be moved.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set_target_properties(zan_platform PROPERTIES EXPORT_NAME platform)
set_target_properties(zan_platform_headers PROPERTIES EXPORT_NAME platform_headers)
if(NOT APPLE AND NOT WIN32)
  set_target_properties(zan PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()
# Two export sets: a host that has platform libraries of its own does not import the stand-in.
foreach(library IN ITEMS zan zan_platform)
  install(
    TARGETS ${library}
    EXPORT ${library}
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
endforeach()
install(TARGETS zan_platform_headers EXPORT zan COMPONENT dev)
install(DIRECTORY include/zan DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT dev FILES_MATCHING PATTERN "*.h")

# find_package(zan 18 CONFIG)
set(config_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zan")
configure_package_config_file(cmake/zan-config.cmake.in zan-config.cmake INSTALL_DESTINATION "${config_dir}"
                              NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/zan-config-version.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/zan-config.cmake" "${CMAKE_CURRENT_BINARY_DIR}/zan-config-version.cmake"
        DESTINATION "${config_dir}" COMPONENT dev)
install(EXPORT zan NAMESPACE zan:: FILE zan-targets.cmake DESTINATION "${config_dir}" COMPONENT dev)
install(EXPORT zan_platform NAMESPACE zan:: FILE zan-platform-targets.cmake DESTINATION "${config_dir}" COMPONENT dev)

# pkg-config
set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pc_to_prefix "/${pc_dir}" "/")
string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
foreach(pc IN ITEMS zan zan-platform)
  configure_file("cmake/${pc}.pc.in" "${pc}.pc" @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${pc}.pc" DESTINATION "${pc_dir}" COMPONENT dev)
endforeach()

# Debuggers' files and the description of the interface.
install(FILES debug/zan.natvis debug/zan_gdb.py tools/api/zan-api.json DESTINATION "${CMAKE_INSTALL_DATADIR}/zan" COMPONENT dev)

# The pages and the examples, in the folders that their links expect; README.md is the entry. The zip for Windows has them
# at its top.
set(doc_dir "${CMAKE_INSTALL_DOCDIR}")
if(WIN32)
  set(doc_dir ".")
endif()
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION "${doc_dir}" COMPONENT dev)
install(DIRECTORY docs examples DESTINATION "${doc_dir}" COMPONENT dev
        FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg" PATTERN "*.jpg" PATTERN "*.cpp" PATTERN "*.c"
                       PATTERN "*.h" PATTERN "*.txt" PATTERN "*.json" PATTERN "*.html" PATTERN "*.cmake" PATTERN "*.sh"
                       PATTERN docs/site EXCLUDE)
if(WIN32)
  zan_install_for_windows()
endif()
