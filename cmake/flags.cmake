# What every target of the project is compiled with.
add_library(veildoc_flags INTERFACE)
target_compile_features(veildoc_flags INTERFACE cxx_std_20)
target_compile_options(veildoc_flags INTERFACE -Wall -Wextra -Wshadow -Wconversion -Wpedantic
                       -Wnon-virtual-dtor -Wold-style-cast $<$<BOOL:${VEILDOC_WERROR}>:-Werror>)
target_include_directories(veildoc_flags INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
# g++ 12 sees overlapping copies in every optimized `"literal" + std::string` (its bug 105651).
target_compile_options(veildoc_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_compile_options(veildoc_flags INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>)
# Several files compiled as one: what a file's locals hide in another is no mistake,
# nor is a class of an included file that is made of them.
set(is_unity $<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>)
target_compile_options(
  veildoc_flags
  INTERFACE $<${is_unity}:-Wno-shadow>
            $<$<AND:${is_unity},$<CXX_COMPILER_ID:GNU>>:-Wno-subobject-linkage>)
