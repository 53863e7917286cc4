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

# The same translations as a file of the program and as a catalogue, in three sizes.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(translations_folder ${CMAKE_CURRENT_BINARY_DIR}/translations)
foreach(lines IN ITEMS 1000 10000 100000)
  set(folder ${translations_folder}/${lines})
  file(MAKE_DIRECTORY ${folder}/de/LC_MESSAGES)
  add_custom_command(OUTPUT ${folder}/translations.txt ${folder}/de/LC_MESSAGES/translations.mo
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/make-translations.py
      ${lines} ${folder}/translations.txt ${folder}/translations.po
    COMMAND ${VRK_MSGFMT} --output-file=${folder}/de/LC_MESSAGES/translations.mo ${folder}/translations.po
    DEPENDS make-translations.py
    VERBATIM)
  list(APPEND translation_files ${folder}/translations.txt ${folder}/de/LC_MESSAGES/translations.mo)
endforeach()

vrk_bench(format FormatBench.cpp TranslationsBench.cpp
  ${catalogue_folder}/de/LC_MESSAGES/bench.mo ${translation_files})
target_link_libraries(bench_format PRIVATE vrk_translations vrk_format fmt::fmt)
target_compile_definitions(bench_format PRIVATE
  VRK_CATALOGUE_FOLDER="${catalogue_folder}"
  VRK_TRANSLATIONS_FOLDER="${translations_folder}")
