find_package(PkgConfig REQUIRED)
pkg_check_modules(PCRE2 REQUIRED IMPORTED_TARGET libpcre2-32)
pkg_check_modules(YAML_CPP REQUIRED IMPORTED_TARGET yaml-cpp)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
find_package(ICU 66 REQUIRED COMPONENTS uc i18n)
find_package(nlohmann_json 3.11 REQUIRED)
find_package(CLI11 2.1 REQUIRED)
find_package(CURL 7.85 REQUIRED)  # CURLOPT_PROTOCOLS_STR
find_library(PHONENUMBER_LIBRARY phonenumber REQUIRED)
