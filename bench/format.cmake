find_package(fmt REQUIRED)
find_program(VRK_MSGFMT msgfmt REQUIRED)

# A catalogue of some hundred texts, among them the one that the benchmark looks up.
set(catalogue_folder ${CMAKE_CURRENT_BINARY_DIR}/catalogue)
set(catalogue "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n")
foreach(number RANGE 1 300)
  string(APPEND catalogue "msgid \"A sentence of its own, number ${number}.\"\nmsgstr \"Ein eigener Satz, Nummer ${number}.\"\n")
endforeach()
string(APPEND catalogue
  "msgid \"{minutes} minutes, {seconds} seconds\"\nmsgstr \"{minutes} Minuten, {seconds} Sekunden\"\n")
file(WRITE ${catalogue_folder}/bench.po "${catalogue}")
file(MAKE_DIRECTORY ${catalogue_folder}/de/LC_MESSAGES)
add_custom_command(OUTPUT ${catalogue_folder}/de/LC_MESSAGES/bench.mo
  COMMAND ${VRK_MSGFMT} --output-file=${catalogue_folder}/de/LC_MESSAGES/bench.mo ${catalogue_folder}/bench.po
  DEPENDS ${catalogue_folder}/bench.po
  VERBATIM)

vrk_bench(format FormatBench.cpp ${catalogue_folder}/de/LC_MESSAGES/bench.mo)
target_link_libraries(bench_format PRIVATE vrk_format fmt::fmt)
target_compile_definitions(bench_format PRIVATE VRK_CATALOGUE_FOLDER="${catalogue_folder}")
