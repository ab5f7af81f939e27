# cmake -DXML=FILE -DNAME=NAME -DOUT=FILE -P embed.cmake: the text of one stored layout as a C++ string.
# A raw string may hold 16 KB for sure, so the text goes over in pieces.
file(READ ${XML} text)
string(LENGTH "${text}" length)
set(piece 8000)
set(out "#include <string_view>\n\nnamespace dorvo::layouts {\nextern const std::string_view k${NAME};\n")
string(APPEND out "const std::string_view k${NAME} =\n")
foreach(from RANGE 0 ${length} ${piece})
  string(SUBSTRING "${text}" ${from} ${piece} part)
  string(APPEND out "    R\"layout(${part})layout\"\n")
endforeach()
string(APPEND out "    ;\n}  // namespace dorvo::layouts\n")
file(WRITE ${OUT} "${out}")
