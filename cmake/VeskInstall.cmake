# find_package(vesk) gives vesk::platform, vesk::resources, vesk::database, vesk::log, vesk::host,
# vesk::timeline and vesk::simulator (standard library only), and vesk::loaders where its libraries
# are there.
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vesk)
configure_package_config_file(cmake/veskConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/veskConfig.cmake
    INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/veskConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/veskConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/veskConfigVersion.cmake
        DESTINATION ${config_dir})
install(EXPORT veskTargets NAMESPACE vesk:: DESTINATION ${config_dir})

# For authors of plug-ins; the log library's headers include it as well.
install(FILES plugins/vesk_plugin.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vesk/plugins)
