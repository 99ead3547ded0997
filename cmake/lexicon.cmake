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

# veildoc_trie(TARGET NAME (LIST COLUMN...)...): compiles the lists data/LIST into
# one trie in TARGET, which core/text/flat_trie.hpp reads as veildoc_trie_NAME.
# tools/lexicons/compile_trie.cpp tells what the COLUMNs mean.
#
# The assembler takes the compiled file as it is, which costs no compile time
# and no start-up time.
function(veildoc_trie target name)
  set(compiled ${PROJECT_BINARY_DIR}/lexicons/${name}.trie)
  set(arguments "")
  set(lists "")
  foreach(argument IN LISTS ARGN)
    if(argument MATCHES "\\.txt$")
      set(argument ${PROJECT_SOURCE_DIR}/data/${argument})
      list(APPEND lists ${argument})
    endif()
    list(APPEND arguments ${argument})
  endforeach()
  add_custom_command(
    OUTPUT ${compiled}
    COMMAND veildoc_compile_trie ${compiled} ${arguments}
    DEPENDS veildoc_compile_trie ${lists}
    VERBATIM)
  veildoc_embed_trie(${target} ${name} ${compiled})
endfunction()

# veildoc_vocabulary(TARGET LIST...): compiles what the embedded analyzer looks for in
# every text from data/ into TARGET, where core/nlp/vocabulary_data.hpp reads it.
# tools/lexicons/vocabulary_words.cpp tells how it reads each LIST.
function(veildoc_vocabulary target)
  set(compiled ${PROJECT_BINARY_DIR}/lexicons/vocabulary.trie)
  set(tables ${PROJECT_BINARY_DIR}/lexicons/vocabulary_data.cpp)
  list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/data/)
  list(TRANSFORM ARGN APPEND .txt)
  add_custom_command(
    OUTPUT ${compiled} ${tables}
    COMMAND veildoc_compile_vocabulary ${PROJECT_SOURCE_DIR}/data ${compiled} ${tables}
    DEPENDS veildoc_compile_vocabulary ${ARGN}
    VERBATIM)
  veildoc_embed_trie(${target} vocabulary ${compiled})
  add_library(vocabulary_tables OBJECT ${tables})
  target_link_libraries(vocabulary_tables PRIVATE veildoc_flags)
  set_target_properties(vocabulary_tables PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:vocabulary_tables>)
endfunction()

# The compiled trie NAME becomes a part of TARGET.
function(veildoc_embed_trie target name compiled)
  set(source ${PROJECT_BINARY_DIR}/lexicons/${name}_trie.cpp)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/trie.cpp.in ${source} @ONLY)
  add_library(trie_${name} OBJECT ${source})
  set_target_properties(trie_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS ${compiled})
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:trie_${name}>)
endfunction()
