# Writes OUTPUT, a C++ file that holds the text of SOURCE under the name NAME.
# The text is cut at line ends into raw literals well below the length that
# every compiler takes.
file(READ ${SOURCE} rest)
set(pieces "")
while(NOT rest STREQUAL "")
  string(LENGTH "${rest}" length)
  set(cut ${length})
  if(length GREATER 8000)
    string(SUBSTRING "${rest}" 8000 -1 behind)
    string(FIND "${behind}" "\n" line_end)
    if(line_end GREATER -1)
      math(EXPR cut "8001 + ${line_end}")
    endif()
  endif()
  string(SUBSTRING "${rest}" 0 ${cut} piece)
  string(SUBSTRING "${rest}" ${cut} -1 rest)
  string(APPEND pieces "R\"~~(${piece})~~\"\n")
endwhile()
file(WRITE ${OUTPUT} "#include <string_view>\n\nnamespace core::text::lexicon_data {\n"
     "extern const std::string_view ${NAME};\nconst std::string_view ${NAME} =\n${pieces};\n}\n")
