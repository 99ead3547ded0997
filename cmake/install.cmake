# The package `veildoc` for other CMake projects, its twin for pkg-config, the
# public headers and the command.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/veildoc)
set(headers_dir ${CMAKE_INSTALL_INCLUDEDIR}/veildoc)

install(TARGETS veildoc_core EXPORT veildocTargets)
install(TARGETS veildoc)
install(FILES cli/installed.txt DESTINATION ${CMAKE_INSTALL_DATADIR}/veildoc)
# The data that is compiled in asks for its notices.
install(FILES LICENSE NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(FILES core/anonymization_core.hpp core/errors.hpp DESTINATION ${headers_dir}/core)
install(FILES core/anonymization/analyzer.hpp core/anonymization/masked_text.hpp
              core/anonymization/overrides.hpp core/anonymization/result.hpp
        DESTINATION ${headers_dir}/core/anonymization)
install(FILES core/anonymization/analyzer/embedded_analyzer.hpp
        DESTINATION ${headers_dir}/core/anonymization/analyzer)
# What a recognizer of one's own is written with
install(FILES core/recognition/context_words.hpp core/recognition/deny_list.hpp
              core/recognition/entity_recognizer.hpp core/recognition/explanation.hpp
              core/recognition/nlp_artifacts.hpp core/recognition/pattern_recognizer.hpp
              core/recognition/recognizer_file.hpp core/recognition/recognizer_registry.hpp
              core/recognition/user_pattern.hpp
        DESTINATION ${headers_dir}/core/recognition)
# Analyzers and services outside
install(FILES core/recognition/analysis_request.hpp core/recognition/analyzer_engine.hpp
        DESTINATION ${headers_dir}/core/recognition)
install(FILES core/nlp/hanlp_client.hpp core/nlp/remote_recognizer.hpp
        DESTINATION ${headers_dir}/core/nlp)
install(FILES core/remote/http_client.hpp core/remote/presidio_remote_analyzer.hpp
        DESTINATION ${headers_dir}/core/remote)
install(FILES core/text/multi_pattern.hpp core/text/regex.hpp DESTINATION ${headers_dir}/core/text)

install(EXPORT veildocTargets NAMESPACE veildoc:: DESTINATION ${package_dir})
configure_package_config_file(cmake/veildocConfig.cmake.in veildocConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(veildocConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/veildocConfig.cmake
              ${PROJECT_BINARY_DIR}/veildocConfigVersion.cmake
        DESTINATION ${package_dir})

# Found from where the file lies, so that the package may be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
configure_file(cmake/veildoc.pc.in veildoc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/veildoc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
