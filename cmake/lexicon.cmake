# veildoc_lexicon(TARGET NAME): compiles data/NAME.txt into TARGET, where
# core/text/lexicon.hpp reads it as core::text::lexicon_data::NAME.
#
# The generated file is an object library of its own, so that the list may be
# named in any folder, whichever folder defines TARGET.
function(veildoc_lexicon target name)
  set(source ${PROJECT_SOURCE_DIR}/data/${name}.txt)
  set(generated ${PROJECT_BINARY_DIR}/lexicons/${name}.cpp)
  add_custom_command(
    OUTPUT ${generated}
    COMMAND ${CMAKE_COMMAND} -DNAME=${name} -DSOURCE=${source} -DOUTPUT=${generated}
            -P ${PROJECT_SOURCE_DIR}/cmake/embed_lexicon.cmake
    DEPENDS ${source} ${PROJECT_SOURCE_DIR}/cmake/embed_lexicon.cmake
    VERBATIM)
  add_library(lexicon_${name} OBJECT ${generated})
  set_target_properties(lexicon_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_compile_features(lexicon_${name} PRIVATE cxx_std_20)
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:lexicon_${name}>)
endfunction()
