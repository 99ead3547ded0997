# Writes OUTPUT, a C++ file that holds the text of SOURCE under the name NAME.
# The text is cut into raw literals well below the length that every compiler takes.
file(READ ${SOURCE} content)
string(LENGTH "${content}" length)
set(pieces "")
set(at 0)
while(at LESS length)
  string(SUBSTRING "${content}" ${at} 8000 piece)
  string(APPEND pieces "R\"~~(${piece})~~\"\n")
  math(EXPR at "${at} + 8000")
endwhile()
file(WRITE ${OUTPUT} "#include <string_view>\n\nnamespace core::text::lexicon_data {\n"
     "extern const std::string_view ${NAME};\nconst std::string_view ${NAME} =\n${pieces};\n}\n")
