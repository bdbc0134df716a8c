# The installed package: find_package(morvaneTypes) gives the targets morvane::<library>.

include(CMakePackageConfigHelpers)

set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/morvaneTypes")

configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/morvaneTypesConfig.cmake.in"
    "${CMAKE_BINARY_DIR}/cmake/morvaneTypesConfig.cmake"
    INSTALL_DESTINATION "${packageDir}")
write_basic_package_version_file(
    "${CMAKE_BINARY_DIR}/cmake/morvaneTypesConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)

install(EXPORT morvaneTypesTargets NAMESPACE morvane:: DESTINATION "${packageDir}")
install(FILES
    "${CMAKE_BINARY_DIR}/cmake/morvaneTypesConfig.cmake"
    "${CMAKE_BINARY_DIR}/cmake/morvaneTypesConfigVersion.cmake"
    DESTINATION "${packageDir}")

if(MINGW)
    install(FILES ${MORVANE_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
