# veildoc_lexicon(TARGET NAME): compiles data/NAME.txt into TARGET, where
# core/text/lexicon.hpp reads it as core::text::lexicon_data::NAME.
function(veildoc_lexicon target name)
  set(source ${PROJECT_SOURCE_DIR}/data/${name}.txt)
  set(generated ${PROJECT_BINARY_DIR}/lexicons/${name}.cpp)
  add_custom_command(
    OUTPUT ${generated}
    COMMAND ${CMAKE_COMMAND} -DNAME=${name} -DSOURCE=${source} -DOUTPUT=${generated}
            -P ${PROJECT_SOURCE_DIR}/cmake/embed_lexicon.cmake
    DEPENDS ${source} ${PROJECT_SOURCE_DIR}/cmake/embed_lexicon.cmake
    VERBATIM)
  target_sources(${target} PRIVATE ${generated})
endfunction()
